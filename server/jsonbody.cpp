#include "jsonbody.h"

#include <cstddef>
#include <cstdint>
#include <set>

#include "answers/json.h"
#include "serverlimits.h"

namespace server {

namespace {

using answers::Json;

constexpr int kIdOfTooLarge = 406;  // the parser's own, of a number that no type holds

/// Is told by the parser what stands in the body, piece by piece, and keeps what is wanted. Limits are looked at first.
class Reader
{
public:
    explicit Reader(WantedFields& wanted) : m_rWanted(wanted) {}

    // The names are those that the library's parser calls.
    // NOLINTBEGIN(readability-identifier-naming)
    bool null()
    {
        beginValue();
        if (m_eField == kArray && m_nDepth > 1) {
            throw badField(m_rWanted.m_sArray, "an array of texts");
        }
        return true;
    }
    bool boolean(bool) { return unfit(); }
    bool number_integer(std::int64_t number) { return integer(std::to_string(number)); }
    bool number_unsigned(std::uint64_t number) { return integer(std::to_string(number)); }
    bool number_float(double, const std::string&) { return unfit(); }
    bool binary(std::vector<std::uint8_t>&) { return unfit(); }
    bool string(std::string& text);
    bool start_object(std::size_t) { return open(false); }
    bool key(std::string& name);
    bool end_object() { return leave(); }
    bool start_array(std::size_t) { return open(true); }
    bool end_array() { return leave(); }
    template <typename Fault>
    bool parse_error(std::size_t byte, const std::string&, const Fault& fault);
    // NOLINTEND(readability-identifier-naming)

private:
    enum Field
    {
        kUnknown,
        kText,
        kArray
    };

    void beginValue();
    bool unfit();
    bool integer(const std::string& digits);
    bool open(bool isArray);
    bool leave();

    WantedFields& m_rWanted;
    std::set<std::string, std::less<>> m_tSeen;
    std::string m_sName;  // of the field that is being read
    Field m_eField = kUnknown;
    std::size_t m_nDepth = 0;
    std::size_t m_nKeys = 0;
    std::size_t m_nElements = 0;
    std::uint64_t m_nArrays = 0;  // a bit for each depth: whether it is an array
};

/// Every value: the body itself is an object, and what stands in arrays is counted.
void Reader::beginValue()
{
    if (m_nDepth == 0) {
        throw Refusal{400, "bad-json", "The body is no JSON object."};
    }
    if ((m_nArrays >> m_nDepth & 1) == 0 || ++m_nElements <= kLines) {
        return;
    }
    if (m_eField == kArray) {
        throw badField(m_sName, "an array of at most " + std::to_string(kLines) + " texts");
    }
    throw Refusal{400, "too-many-elements",
                  "The body has arrays with more than " + std::to_string(kLines) + " elements."};
}

/// A value that no wanted field can have.
bool Reader::unfit()
{
    beginValue();
    if (m_eField == kText) {
        throw badField(m_sName, "a text");
    }
    if (m_eField == kArray) {
        throw badField(m_sName, "an array of texts");
    }
    return true;
}

bool Reader::string(std::string& text)
{
    if (m_eField == kArray && m_nDepth == 2) {
        beginValue();
        m_rWanted.m_tArray.push_back(text);
        return true;
    }
    if (m_eField != kText) {
        return unfit();
    }
    m_rWanted.m_tTexts.find(m_sName)->second = vel::stringFromUtf8(text);
    return true;
}

bool Reader::integer(const std::string& digits)
{
    if (m_eField != kText) {
        return unfit();
    }
    m_rWanted.m_tTexts.find(m_sName)->second = vel::stringFromUtf8(digits);
    return true;
}

bool Reader::open(bool isArray)
{
    const bool isWhole = m_nDepth == 0 && !isArray;
    const bool isWanted = isArray && m_eField == kArray && m_nDepth == 1;
    if (!isWhole && !isWanted) {
        unfit();
    }
    if (++m_nDepth > kBodyDepth) {
        throw Refusal{400, "too-deep", "The body is deeper than " + std::to_string(kBodyDepth) + " levels."};
    }
    const std::uint64_t bit = std::uint64_t{1} << m_nDepth;
    m_nArrays = isArray ? m_nArrays | bit : m_nArrays & ~bit;
    return true;
}

bool Reader::leave()
{
    --m_nDepth;
    return true;
}

bool Reader::key(std::string& name)
{
    if (++m_nKeys > kBodyKeys) {
        throw Refusal{400, "too-many-fields", "The body has more than " + std::to_string(kBodyKeys) + " keys."};
    }
    if (m_nDepth != 1) {
        return true;
    }
    m_eField = m_rWanted.m_tTexts.count(name) != 0 ? kText : name == m_rWanted.m_sArray ? kArray : kUnknown;
    m_sName = name;
    if (m_eField != kUnknown && !m_tSeen.insert(name).second) {
        throw Refusal{400, "bad-field", "The field " + name + " stands twice.", {}, name};
    }
    return true;
}

template <typename Fault>
bool Reader::parse_error(std::size_t byte, const std::string&,  // NOLINT(readability-identifier-naming)
                         const Fault& fault)
{
    if (fault.id == kIdOfTooLarge) {
        throw Refusal{400, "bad-json", "The body has a number that is too large."};
    }
    throw Refusal{400, "bad-json", "The body is no JSON, at its byte " + std::to_string(byte) + "."};
}

}  // namespace

Refusal badField(std::string_view name, const std::string& expected)
{
    return {400, "bad-field", "The field " + std::string(name) + " is not " + expected + ".", {}, std::string(name)};
}

void readJsonBody(const std::string& body, WantedFields& wanted)
{
    Reader reader(wanted);
    try {
        Json::sax_parse(body, &reader);
    } catch (const Refusal&) {
        // Where the bytes are the reason, that is said.
        std::size_t offset = 0;
        if (!vel::stringFromUtf8(body, &offset)) {
            throw Refusal{400, "bad-encoding",
                          "The body is no UTF-8, at its byte offset " + std::to_string(offset) + "."};
        }
        throw;
    }
}

}  // namespace server
