#include <gtest/gtest.h>

#include "charactersets.h"
#include "eightthreads.h"

// Readers on eight threads over one resolver. Expectations are counted, as they are not made on the threads.

namespace {

using namespace testsupport;
using vel::CharacterSet;
using vel::CharacterSetResolver;
using vel::Handle;
using vel::String;

bool encodes(const CharacterSet& set, const String& text, const vel::NarrowString& expected)
{
    vel::NarrowString bytes;
    return !set.getTranscoding().encode(text, bytes).has_value() && bytes == expected;
}

int faultsOfReader(const CharacterSetResolver& resolver)
{
    const auto supported = resolver.getCharacterSetList(L"supported");
    const auto preferred = resolver.getCharacterSetList(L"PREFERRED");
    const Handle<CharacterSet> chosen = resolver.getPreferredCharacterSet(*supported, *preferred);
    const Handle<CharacterSet> named = resolver.getCharacterSetByEncodingLabel(*supported, L"UNICODE");
    int faults = 0;
    faults += chosen->getLabel() == L"russian" && encodes(*chosen, L"\u0430", "\xC1") ? 0 : 1;
    faults += named->getLabel() == L"UNICODE" && encodes(*named, L"\u0430", "\xD0\xB0") ? 0 : 1;
    faults += resolver.getCharacterSetDefinition(L"nowhere").isNull() ? 0 : 1;
    faults += resolver.minimizeCharacterSetList(*supported)->numDefinitions() == 2 ? 0 : 1;
    return faults;
}

TEST(CharacterSetThreads, ReadersDoNotDisturbEachOther)
{
    const Handle<CharacterSetResolver> resolver =
        resolverWith(listElement("supported", entry("a", "label='unicode'") + entry("c", "label='russian'")) +
                     listElement("preferred", entry("b") + entry("c")));
    const auto definition = resolver->getCharacterSetDefinition(L"c");
    const std::uint32_t shares = definition->referenceCount();
    EXPECT_EQ(0, faultsOf([&](int) {
                  int faults = 0;
                  for (int i = 0; i < 2000; ++i) {
                      faults += faultsOfReader(*resolver);
                  }
                  return faults;
              }));
    EXPECT_EQ(shares, definition->referenceCount());
}

}  // namespace
