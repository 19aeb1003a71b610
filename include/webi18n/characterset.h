#pragma once

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/core/stringbuffer.h"
#include "vel/transcoding/universaltranscoding.h"

namespace vel {

/// The character set of a response: the label that announces it and the transcoder that produces it. Made by
/// CharacterSetResolver for one answer; immutable, so that it may be read from any thread.
class WEBI18N_API CharacterSet : public RefCounted
{
public:
    /// Throws what UniversalTranscoding throws for a name that it does not know.
    CharacterSet(const String& sLabel, const String& sImplementationName);
    ~CharacterSet() override;

    /// Always true, deliberately: there is a character set only for an implementation that the transcoding library has.
    bool isValid() const noexcept { return true; }
    /// What the host writes into the response, such as "utf-8".
    const String& getLabel() const noexcept { return m_sLabel; }
    /// What the host encodes the response with.
    const UniversalTranscoding& getTranscoding() const noexcept { return m_tTranscoding; }

    /// Appends a description for people who debug. The label is not escaped, deliberately: it is shown as it is.
    ///
    ///     utf-8 -> <Charset label="utf-8"></Charset>
    ///     a"b&c -> <Charset label="a"b&c"></Charset>
    void xmlDebugInformation(StringBufferBaseTemplate<wchar_t>& rBuffer) const;

private:
    String m_sLabel;
    UniversalTranscoding m_tTranscoding;
};

}  // namespace vel
