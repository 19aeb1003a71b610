// XML Schema's dates and times: whatever the text, the parser agrees with its slow twin.

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "../tests/support/exacttext.h"
#include "require.h"
#include "slowparsedatetime.h"
#include "webi18n/parsedatetime.h"
#include "widebytes.h"

namespace {

using fuzzing::require;

/// The slow parser recurses once a sign.
constexpr std::size_t kLongest = 4096;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = fuzzing::widen(data, std::min(size, kLongest));
    const testsupport::ExactText copy(text);
    const vel::DateTime before{-1, 77, 77, 77, 77, 77, 77};
    vel::DateTime value = before;
    const vel::ParseDateTime::XmlType form = vel::ParseDateTime::parseXmlDateTime(copy.begin(), copy.end(), value);
    const reference::XmlAnswer slow = reference::parseXml(text);
    require(form == slow.m_eForm);
    require(slow.m_bUntouched ? value == before : value != before);
    require(form == vel::ParseDateTime::kInvalid || value == slow.m_tValue);
    return 0;
}
