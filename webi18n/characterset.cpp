#include "webi18n/characterset.h"

namespace vel {

CharacterSet::CharacterSet(const String& sLabel, const String& sImplementationName)
    : m_sLabel(sLabel), m_tTranscoding(sImplementationName)
{}

CharacterSet::~CharacterSet() = default;

void CharacterSet::xmlDebugInformation(StringBufferBaseTemplate<wchar_t>& rBuffer) const
{
    rBuffer.append(L"<Charset label=\"");
    rBuffer.append(m_sLabel.view());
    rBuffer.append(L"\">");
    rBuffer.append(L"</Charset>");
}

}  // namespace vel
