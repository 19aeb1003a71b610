#pragma once

#include <cstdint>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"

namespace vel {

/// One character set of the system: its label, and the transcoders that can encode it, the preferred one first. A plain
/// holder, filled by one thread and then shared by Handle<const CharacterSetDefinition> and only read, from any thread.
class WEBI18N_API CharacterSetDefinition : public RefCounted
{
public:
    using ImplementationNames = std::vector<String>;

    /// No implementations, not minimized.
    explicit CharacterSetDefinition(const String& sLabel);
    ~CharacterSetDefinition() override;

    /// Appends; duplicates and the empty name are kept. Strong: when memory runs out nothing is changed.
    void addImplementationName(const String& sName);

    /// The name under which lists refer to it.
    const String& getDefinitionLabel() const noexcept { return m_sDefinitionLabel; }
    /// In the order added.
    const ImplementationNames& getImplementationNames() const noexcept { return m_vImplementationNames; }
    std::uint32_t numImplementations() const noexcept
    {
        return static_cast<std::uint32_t>(m_vImplementationNames.size());
    }
    /// Whether it holds only implementations that the transcoding library has. A statement of who built it: nothing
    /// here verifies it.
    bool isMinimized() const noexcept { return m_bMinimized; }
    void setMinimized(bool bMinimized) noexcept { m_bMinimized = bMinimized; }

private:
    String m_sDefinitionLabel;
    ImplementationNames m_vImplementationNames;
    bool m_bMinimized = false;
};

}  // namespace vel
