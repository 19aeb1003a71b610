#include "webjapanese.h"

#include "webindex.h"

namespace reference {

namespace {

const WebIndex& jis0208()
{
    static const WebIndex s_index("jis0208");
    return s_index;
}

/// What the three Japanese encodings do alike before they look into their index.
Bytes japaneseSingle(char32_t character)
{
    if (character < 0x80) {
        return bytesOf({static_cast<unsigned>(character)});
    }
    if (character == 0xA5) {
        return bytesOf({0x5C});
    }
    return character == 0x203E ? Bytes(bytesOf({0x7E})) : Bytes();
}

bool isHalfKatakana(char32_t character)
{
    return character >= 0xFF61 && character <= 0xFF9F;
}

char32_t withFullMinus(char32_t character)
{
    return character == 0x2212 ? U'\uFF0D' : character;
}

class EucJp : public WebEncoding
{
public:
    Bytes encode(char32_t character) const override
    {
        if (const Bytes single = japaneseSingle(character)) {
            return single;
        }
        if (isHalfKatakana(character)) {
            return bytesOf({0x8E, static_cast<unsigned>(character - 0xFF61 + 0xA1)});
        }
        const std::optional<unsigned> pointer = jis0208().firstPointer(withFullMinus(character));
        return pointer && *pointer < 94 * 94 ? Bytes(bytesOf({*pointer / 94 + 0xA1, *pointer % 94 + 0xA1})) : Bytes();
    }

protected:
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        const unsigned lead = at(bytes, place);
        const unsigned second = at(bytes, place + 1);
        if (lead < 0x80) {
            ++place;
            out.push_back(lead);
            return true;
        }
        if (lead == 0x8E && isIn(second, 0xA1, 0xDF)) {
            place += 2;
            out.push_back(0xFF61 - 0xA1 + second);
            return true;
        }
        const bool isThree = lead == 0x8F;
        const unsigned row = isThree ? second : lead;
        const unsigned cell = isThree ? at(bytes, place + 2) : second;
        place += isThree ? 3 : 2;
        return isIn(row, 0xA1, 0xFE) && isIn(cell, 0xA1, 0xFE) &&
               append((isThree ? m_tJis0212 : jis0208()).character((row - 0xA1) * 94 + cell - 0xA1), out);
    }

private:
    WebIndex m_tJis0212{"jis0212"};
};

class ShiftJis : public WebEncoding
{
public:
    Bytes encode(char32_t character) const override
    {
        if (character == 0x80) {
            return bytesOf({0x80});
        }
        if (const Bytes single = japaneseSingle(character)) {
            return single;
        }
        if (isHalfKatakana(character)) {
            return bytesOf({static_cast<unsigned>(character - 0xFF61 + 0xA1)});
        }
        for (const unsigned pointer : jis0208().pointers(withFullMinus(character))) {
            if (!isIn(pointer, 8272, 8835)) {
                const unsigned lead = pointer / 188;
                const unsigned trail = pointer % 188;
                return bytesOf({lead + (lead < 0x1F ? 0x81U : 0xC1U), trail + (trail < 0x3F ? 0x40U : 0x41U)});
            }
        }
        return std::nullopt;
    }

protected:
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        const unsigned lead = at(bytes, place);
        const unsigned trail = at(bytes, place + 1);
        if (lead <= 0x80 || isIn(lead, 0xA1, 0xDF)) {
            ++place;
            out.push_back(lead <= 0x80 ? lead : 0xFF61 - 0xA1 + lead);
            return true;
        }
        if (!(isIn(lead, 0x81, 0x9F) || isIn(lead, 0xE0, 0xFC)) ||
            !(isIn(trail, 0x40, 0x7E) || isIn(trail, 0x80, 0xFC))) {
            return false;
        }
        place += 2;
        const unsigned pointer = (lead - (lead < 0xA0 ? 0x81 : 0xC1)) * 188 + trail - (trail < 0x7F ? 0x40 : 0x41);
        if (isIn(pointer, 8836, 10715)) {
            out.push_back(0xE000 - 8836 + pointer);
            return true;
        }
        return append(jis0208().character(pointer), out);
    }
};

class Iso2022Jp : public WebEncoding
{
public:
    Bytes encode(char32_t character) const override
    {
        if (character == 0x0E || character == 0x0F || character == 0x1B) {
            return std::nullopt;
        }
        if (const Bytes single = japaneseSingle(character)) {
            return character < 0x80 ? single : "\x1B(J" + *single + "\x1B(B";
        }
        const char32_t full = isHalfKatakana(character) ? fullKatakana()[character - 0xFF61] : withFullMinus(character);
        const std::optional<unsigned> pointer = jis0208().firstPointer(full);
        return pointer && *pointer < 94 * 94
                   ? Bytes("\x1B$B" + bytesOf({*pointer / 94 + 0x21, *pointer % 94 + 0x21}) + "\x1B(B")
                   : Bytes();
    }

protected:
    /// Reads all at once: what a byte means depends on the escape sequences before it.
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        char set = 'B';
        while (place < bytes.size()) {
            if (bytes[place] != 0x1B) {
                if (!decodeIn(set, bytes, place, out)) {
                    return false;
                }
                continue;
            }
            const std::string escape = bytes.substr(place + 1, 2);
            if (escape != "(B" && escape != "(J" && escape != "(I" && escape != "$@" && escape != "$B") {
                return false;
            }
            set = escape[0] == '$' ? '$' : escape[1];
            place += 3;
        }
        return true;
    }

private:
    static const std::u32string& fullKatakana()
    {
        static const std::u32string s_characters =
            U"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤ"
            U"ユヨ"
            U"ラリルレロワン゛゜";
        return s_characters;
    }
    static bool decodeIn(char set, const std::string& bytes, std::size_t& place, std::u32string& out)
    {
        const unsigned byte = at(bytes, place++);
        if (set == '$') {
            const unsigned trail = at(bytes, place++);
            return isIn(byte, 0x21, 0x7E) && isIn(trail, 0x21, 0x7E) &&
                   append(jis0208().character((byte - 0x21) * 94 + trail - 0x21), out);
        }
        if (set == 'I') {
            out.push_back(0xFF61 - 0x21 + byte);
            return isIn(byte, 0x21, 0x5F);
        }
        const bool isRoman = set == 'J';
        out.push_back(isRoman && byte == 0x5C ? 0xA5 : isRoman && byte == 0x7E ? 0x203E : byte);
        return byte < 0x80 && byte != 0x0E && byte != 0x0F;
    }
};

}  // namespace

std::unique_ptr<const WebEncoding> eucJp()
{
    return std::make_unique<EucJp>();
}

std::unique_ptr<const WebEncoding> shiftJis()
{
    return std::make_unique<ShiftJis>();
}

std::unique_ptr<const WebEncoding> iso2022Jp()
{
    return std::make_unique<Iso2022Jp>();
}

}  // namespace reference
