#include "webi18n/charactersetdefinition.h"

namespace vel {

CharacterSetDefinition::CharacterSetDefinition(const String& sLabel) : m_sDefinitionLabel(sLabel)
{}

CharacterSetDefinition::~CharacterSetDefinition() = default;

void CharacterSetDefinition::addImplementationName(const String& sName)
{
    m_vImplementationNames.push_back(sName);
}

}  // namespace vel
