// XML Schema's dates and times: whatever the text, the parser agrees with its slow twin.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "slowparsedatetime.h"
#include "webi18n/parsedatetime.h"
#include "widebytes.h"

namespace {

/// The slow parser recurses once a sign.
constexpr std::size_t kLongest = 4096;

void require(bool condition)
{
    if (!condition) {
        __builtin_trap();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = fuzzing::widen(data, std::min(size, kLongest));
    // A block of exactly the text's size: a sanitizer sees a read past its end.
    const std::unique_ptr<wchar_t[]> copy(new wchar_t[text.size()]);
    std::copy(text.begin(), text.end(), copy.get());
    const vel::DateTime before{-1, 77, 77, 77, 77, 77, 77};
    vel::DateTime value = before;
    const vel::ParseDateTime::XmlType form =
        vel::ParseDateTime::parseXmlDateTime(copy.get(), copy.get() + text.size(), value);
    const reference::XmlAnswer slow = reference::parseXml(text);
    require(form == slow.m_eForm);
    require(slow.m_bUntouched ? value == before : value != before);
    require(form == vel::ParseDateTime::kInvalid || value == slow.m_tValue);
    return 0;
}
