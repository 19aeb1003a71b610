#include "webencodings.h"

#include <array>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <unordered_map>

#include "vel/core/utf8.h"

namespace reference {

namespace {

using Bytes = std::optional<std::string>;

std::ifstream open(const std::string& file)
{
    std::ifstream stream(std::string(WEBI18N_WEB_ENCODINGS) + "/" + file);
    if (!stream) {
        throw std::runtime_error("no file " + file);
    }
    return stream;
}

unsigned at(const std::string& bytes, std::size_t place)
{
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0x100;
}

bool isIn(unsigned byte, unsigned first, unsigned last)
{
    return byte >= first && byte <= last;
}

std::string bytesOf(std::initializer_list<unsigned> values)
{
    std::string bytes;
    for (const unsigned each : values) {
        bytes.push_back(static_cast<char>(each));
    }
    return bytes;
}

bool isScalar(char32_t character)
{
    return character < 0xD800 || (character > 0xDFFF && character < 0x110000);
}

/// Characters by pointer; a pointer by character is the first, but where an encoding leaves a part out.
class Index
{
public:
    explicit Index(const std::string& name)
    {
        std::ifstream stream = open("index-" + name + ".txt");
        for (std::string line; std::getline(stream, line);) {
            const std::size_t tab = line.find('\t');
            std::wstring characters;
            if (vel::appendUtf8AsWide(line.substr(tab + 1), characters)) {
                throw std::runtime_error("index " + name + " is no UTF-8");
            }
            unsigned pointer = static_cast<unsigned>(std::stoul(line));
            for (const wchar_t each : characters) {
                m_tCharacters.emplace(pointer++, static_cast<char32_t>(each));
            }
        }
        for (const auto& [pointer, character] : m_tCharacters) {
            m_tPointers[character].push_back(pointer);
        }
    }
    std::optional<char32_t> character(unsigned pointer) const
    {
        const auto found = m_tCharacters.find(pointer);
        return found == m_tCharacters.end() ? std::nullopt : std::optional(found->second);
    }
    /// Every pointer of the character, in rising order.
    const std::vector<unsigned>& pointers(char32_t character) const
    {
        static const std::vector<unsigned> kNone;
        const auto found = m_tPointers.find(character);
        return found == m_tPointers.end() ? kNone : found->second;
    }
    std::optional<unsigned> firstPointer(char32_t character) const
    {
        return pointers(character).empty() ? std::nullopt : std::optional(pointers(character).front());
    }

private:
    std::map<unsigned, char32_t> m_tCharacters;
    std::unordered_map<char32_t, std::vector<unsigned>> m_tPointers;
};

const Index& jis0208()
{
    static const Index s_index("jis0208");
    return s_index;
}

bool append(const std::optional<char32_t>& character, std::u32string& out)
{
    if (character) {
        out.push_back(*character);
    }
    return character.has_value();
}

class SingleByte : public WebEncoding
{
public:
    explicit SingleByte(const std::vector<std::string>& codePoints)
    {
        for (std::size_t i = 0; i < codePoints.size(); ++i) {
            const bool isUsed = codePoints[i] != "-";
            m_tUpper[i] = isUsed ? static_cast<char32_t>(std::stoul(codePoints[i], nullptr, 16)) : 0;
        }
    }
    Bytes encode(char32_t character) const override
    {
        if (character < 0x80) {
            return bytesOf({static_cast<unsigned>(character)});
        }
        for (unsigned i = 0; i < m_tUpper.size(); ++i) {
            if (m_tUpper[i] == character) {
                return bytesOf({i + 0x80});
            }
        }
        return std::nullopt;
    }

protected:
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        const unsigned byte = at(bytes, place++);
        out.push_back(byte < 0x80 ? byte : m_tUpper[byte - 0x80]);
        return byte < 0x80 || out.back() != 0;
    }

private:
    std::array<char32_t, 128> m_tUpper{};
};

class Gb18030 : public WebEncoding
{
public:
    explicit Gb18030(bool isGbk) : m_bGbk(isGbk)
    {
        std::ifstream stream = open("gb18030-ranges.txt");
        unsigned pointer = 0;
        for (std::string codePoint; stream >> pointer >> codePoint;) {
            m_tRanges.emplace_back(pointer, static_cast<char32_t>(std::stoul(codePoint, nullptr, 16)));
        }
    }
    Bytes encode(char32_t character) const override
    {
        if (character < 0x80) {
            return bytesOf({static_cast<unsigned>(character)});
        }
        if (character == 0xE5E5) {
            return std::nullopt;
        }
        if (m_bGbk && character == 0x20AC) {
            return bytesOf({0x80});
        }
        if (const std::optional<unsigned> pointer = m_tIndex.firstPointer(character)) {
            const unsigned trail = *pointer % 190;
            return bytesOf({*pointer / 190 + 0x81, trail + (trail < 0x3F ? 0x40U : 0x41U)});
        }
        return m_bGbk ? Bytes() : encodeFour(character);
    }

protected:
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        const unsigned lead = at(bytes, place);
        const unsigned second = at(bytes, place + 1);
        if (lead < 0x80 || lead == 0x80) {
            ++place;
            out.push_back(lead == 0x80 ? U'\u20AC' : lead);
            return true;
        }
        if (lead == 0xFF || second > 0xFF) {
            return false;
        }
        if (isIn(second, 0x30, 0x39)) {
            return decodeFour(bytes, place, out);
        }
        place += 2;
        return (isIn(second, 0x40, 0x7E) || isIn(second, 0x80, 0xFE)) &&
               append(m_tIndex.character((lead - 0x81) * 190 + second - (second < 0x7F ? 0x40 : 0x41)), out);
    }

private:
    Bytes encodeFour(char32_t character) const
    {
        unsigned pointer = 7457;
        if (character != 0xE7C7) {
            std::size_t i = m_tRanges.size() - 1;
            while (m_tRanges[i].second > character) {
                --i;
            }
            pointer = m_tRanges[i].first + static_cast<unsigned>(character - m_tRanges[i].second);
        }
        return bytesOf(
            {pointer / 12600 + 0x81, pointer / 1260 % 10 + 0x30, pointer / 10 % 126 + 0x81, pointer % 10 + 0x30});
    }
    bool decodeFour(const std::string& bytes, std::size_t& place, std::u32string& out) const
    {
        const unsigned third = at(bytes, place + 2);
        const unsigned fourth = at(bytes, place + 3);
        if (!isIn(third, 0x81, 0xFE) || !isIn(fourth, 0x30, 0x39)) {
            return false;
        }
        const unsigned pointer =
            ((at(bytes, place) - 0x81) * 10 + at(bytes, place + 1) - 0x30) * 1260 + (third - 0x81) * 10 + fourth - 0x30;
        place += 4;
        if (isIn(pointer, 39420, 188999) || pointer > 1237575) {
            return false;
        }
        if (pointer == 7457) {
            return append(U'\uE7C7', out);
        }
        std::size_t i = m_tRanges.size() - 1;
        while (m_tRanges[i].first > pointer) {
            --i;
        }
        out.push_back(m_tRanges[i].second + pointer - m_tRanges[i].first);
        return true;
    }

    Index m_tIndex{"gb18030"};
    std::vector<std::pair<unsigned, char32_t>> m_tRanges;
    bool m_bGbk;
};

class Big5 : public WebEncoding
{
public:
    Bytes encode(char32_t character) const override
    {
        if (character < 0x80) {
            return bytesOf({static_cast<unsigned>(character)});
        }
        // The part that only Hong Kong's extension has is read, not written.
        std::vector<unsigned> pointers;
        for (const unsigned each : m_tIndex.pointers(character)) {
            if (each >= (0xA1 - 0x81) * 157) {
                pointers.push_back(each);
            }
        }
        if (pointers.empty()) {
            return std::nullopt;
        }
        const std::u32string lastOnes = U"\u2550\u255E\u2561\u256A\u5341\u5345";
        const unsigned pointer = lastOnes.find(character) == std::u32string::npos ? pointers.front() : pointers.back();
        const unsigned trail = pointer % 157;
        return bytesOf({pointer / 157 + 0x81, trail + (trail < 0x3F ? 0x40U : 0x62U)});
    }

protected:
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        const unsigned lead = at(bytes, place);
        const unsigned trail = at(bytes, place + 1);
        if (lead < 0x80) {
            ++place;
            out.push_back(lead);
            return true;
        }
        if (!isIn(lead, 0x81, 0xFE) || !(isIn(trail, 0x40, 0x7E) || isIn(trail, 0xA1, 0xFE))) {
            return false;
        }
        place += 2;
        const unsigned pointer = (lead - 0x81) * 157 + trail - (trail < 0x7F ? 0x40 : 0x62);
        for (const auto& [pair, characters] : m_tPairs) {
            if (pair == pointer) {
                out += characters;
                return true;
            }
        }
        return append(m_tIndex.character(pointer), out);
    }

private:
    Index m_tIndex{"big5"};
    const std::vector<std::pair<unsigned, std::u32string>> m_tPairs = {
        {1133, U"\u00CA\u0304"}, {1135, U"\u00CA\u030C"}, {1164, U"\u00EA\u0304"}, {1166, U"\u00EA\u030C"}};
};

class EucKr : public WebEncoding
{
public:
    Bytes encode(char32_t character) const override
    {
        if (character < 0x80) {
            return bytesOf({static_cast<unsigned>(character)});
        }
        const std::optional<unsigned> pointer = m_tIndex.firstPointer(character);
        return pointer ? Bytes(bytesOf({*pointer / 190 + 0x81, *pointer % 190 + 0x41})) : Bytes();
    }

protected:
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        const unsigned lead = at(bytes, place);
        const unsigned trail = at(bytes, place + 1);
        if (lead < 0x80) {
            ++place;
            out.push_back(lead);
            return true;
        }
        place += 2;
        return isIn(lead, 0x81, 0xFE) && isIn(trail, 0x41, 0xFE) &&
               append(m_tIndex.character((lead - 0x81) * 190 + trail - 0x41), out);
    }

private:
    Index m_tIndex{"euc-kr"};
};

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
    Index m_tJis0212{"jis0212"};
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

class Utf8 : public WebEncoding
{
public:
    Bytes encode(char32_t character) const override
    {
        return isScalar(character) ? Bytes(vel::toUtf8Lossy(std::wstring(1, static_cast<wchar_t>(character))))
                                   : Bytes();
    }

protected:
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        std::wstring wide;
        if (vel::appendUtf8AsWide(bytes, wide)) {
            return false;
        }
        place = bytes.size();
        out.append(wide.begin(), wide.end());
        return true;
    }
};

class Utf16 : public WebEncoding
{
public:
    explicit Utf16(bool isBigEndian) : m_bBigEndian(isBigEndian) {}

    Bytes encode(char32_t character) const override
    {
        if (!isScalar(character)) {
            return std::nullopt;
        }
        const unsigned value = static_cast<unsigned>(character);
        return value < 0x10000 ? unit(value) : unit(0xD7C0 + (value >> 10)) + unit(0xDC00 | (value & 0x3FF));
    }

protected:
    bool decodeNext(const std::string& bytes, std::size_t& place, std::u32string& out) const override
    {
        const unsigned first = unitAt(bytes, place);
        const unsigned second = unitAt(bytes, place + 2);
        const bool isPair = isIn(first, 0xD800, 0xDBFF) && isIn(second, 0xDC00, 0xDFFF);
        place += isPair ? 4 : 2;
        out.push_back(isPair ? ((first - 0xD7C0) << 10 | (second & 0x3FF)) : first);
        return isScalar(out.back());
    }

private:
    std::string unit(unsigned value) const
    {
        return m_bBigEndian ? bytesOf({value >> 8, value & 0xFF}) : bytesOf({value & 0xFF, value >> 8});
    }
    /// Beyond the end it is more than any unit.
    unsigned unitAt(const std::string& bytes, std::size_t place) const
    {
        if (place + 2 > bytes.size()) {
            return 0xD800;
        }
        return m_bBigEndian ? at(bytes, place) << 8 | at(bytes, place + 1)
                            : at(bytes, place + 1) << 8 | at(bytes, place);
    }

    bool m_bBigEndian;
};

using Encodings = std::map<std::string, std::unique_ptr<const WebEncoding>>;

Encodings readEncodings()
{
    Encodings encodings;
    std::ifstream stream = open("single-byte.txt");
    for (std::string line; std::getline(stream, line);) {
        std::istringstream words(line);
        std::string name;
        words >> name;
        std::vector<std::string> codePoints;
        for (std::string each; words >> each;) {
            codePoints.push_back(each);
        }
        if (codePoints.size() != 128) {
            throw std::runtime_error("not 128 bytes of " + name);
        }
        encodings.emplace(name, std::make_unique<SingleByte>(codePoints));
        if (name == "iso-8859-8") {
            // It differs in the direction of the text only.
            encodings.emplace("iso-8859-8-i", std::make_unique<SingleByte>(codePoints));
        }
    }
    encodings.emplace("gbk", std::make_unique<Gb18030>(true));
    encodings.emplace("gb18030", std::make_unique<Gb18030>(false));
    encodings.emplace("big5", std::make_unique<Big5>());
    encodings.emplace("euc-jp", std::make_unique<EucJp>());
    encodings.emplace("shift_jis", std::make_unique<ShiftJis>());
    encodings.emplace("iso-2022-jp", std::make_unique<Iso2022Jp>());
    encodings.emplace("euc-kr", std::make_unique<EucKr>());
    encodings.emplace("utf-8", std::make_unique<Utf8>());
    encodings.emplace("utf-16be", std::make_unique<Utf16>(true));
    encodings.emplace("utf-16le", std::make_unique<Utf16>(false));
    return encodings;
}

}  // namespace

std::optional<std::u32string> WebEncoding::decode(const std::string& bytes) const
{
    std::u32string text;
    for (std::size_t place = 0; place < bytes.size();) {
        if (!decodeNext(bytes, place, text)) {
            return std::nullopt;
        }
    }
    return text;
}

const std::map<std::string, std::string>& webLabels()
{
    static const std::map<std::string, std::string> s_labels = [] {
        std::map<std::string, std::string> labels;
        std::ifstream stream = open("labels.txt");
        for (std::string line; std::getline(stream, line);) {
            std::istringstream words(line);
            std::string name;
            words >> name;
            for (std::string each; words >> each;) {
                labels.emplace(each, name);
            }
        }
        return labels;
    }();
    return s_labels;
}

const WebEncoding& webEncoding(const std::string& name)
{
    static const Encodings s_encodings = readEncodings();
    const auto found = s_encodings.find(name);
    if (found == s_encodings.end()) {
        throw std::runtime_error("no encoding " + name);
    }
    return *found->second;
}

}  // namespace reference
