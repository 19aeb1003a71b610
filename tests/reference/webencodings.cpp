#include "webencodings.h"

#include <array>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "vel/core/utf8.h"
#include "webindex.h"
#include "webjapanese.h"

namespace reference {

namespace {

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
        std::ifstream stream = openWebFile("gb18030-ranges.txt");
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

    WebIndex m_tIndex{"gb18030"};
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
    WebIndex m_tIndex{"big5"};
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
    WebIndex m_tIndex{"euc-kr"};
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
    std::ifstream stream = openWebFile("single-byte.txt");
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
    encodings.emplace("euc-jp", eucJp());
    encodings.emplace("shift_jis", shiftJis());
    encodings.emplace("iso-2022-jp", iso2022Jp());
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
        std::ifstream stream = openWebFile("labels.txt");
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
