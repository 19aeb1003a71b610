#include <algorithm>
#include <cwchar>
#include <stdexcept>

#include "rows.h"
#include "webi18n/charactersetresolver.h"

// The choice of a response's character set between what the server supports and what the locale prefers.

namespace bench {

namespace {

using vel::CharacterSetList;
using vel::CharacterSetResolver;
using vel::Handle;
using Labels = std::vector<std::wstring>;

vel::String pathOf(const std::string& file)
{
    return vel::stringFromUtf8(file).value();
}

Handle<const CharacterSetResolver> loadCharacterSets(const Data& data)
{
    const auto resolver = vel::makeHandle<CharacterSetResolver>();
    resolver->loadCharacterSetDefinitions(pathOf(data.m_sCharacterSets));
    resolver->loadCharacterSetLists(pathOf(data.m_sCharacterSetLists));
    return resolver;
}

/// The lists of one situation: one supported list, and those that are asked for one after the other.
struct Lists
{
    Handle<const CharacterSetResolver> m_hResolver;
    Handle<const CharacterSetList> m_hSupported;
    std::vector<Handle<const CharacterSetList>> m_vPreferred;
};

Lists packLists(const Data& data)
{
    Lists lists;
    lists.m_hResolver = loadCharacterSets(data);
    lists.m_hSupported = lists.m_hResolver->getCharacterSetList(L"supported");
    for (const auto& [name, list] : lists.m_hResolver->getCharacterSetLists()) {
        if (name.startsWith(L"locale:")) {
            lists.m_vPreferred.push_back(list);
        }
    }
    if (lists.m_vPreferred.empty()) {
        throw std::runtime_error("the pack has no list of a locale");
    }
    return lists;
}

/// The same, for a server that has no UTF-8: the locale's other sets decide, and often none is there.
Lists withoutUtf8(Lists lists, std::size_t entries)
{
    const auto supported = vel::makeHandle<CharacterSetList>();
    for (auto each = lists.m_hSupported->definitions_begin(); each != lists.m_hSupported->definitions_end(); ++each) {
        if (each->first != L"utf-8" && supported->numDefinitions() < entries) {
            supported->addDefinition(each->first, each->second);
        }
    }
    supported->setMinimized(true);
    lists.m_hSupported = supported;
    return lists;
}

/// What a host would keep by hand.
struct PlainList
{
    Labels m_vLabels;
    Labels m_vImplementations;
};

PlainList plainListOf(const CharacterSetList& list)
{
    PlainList plain;
    for (auto each = list.definitions_begin(); each != list.definitions_end(); ++each) {
        plain.m_vLabels.push_back(each->second->getDefinitionLabel().standard());
        plain.m_vImplementations.push_back(each->second->getImplementationNames().front().standard());
    }
    return plain;
}

/// What a host would write by hand: label and implementation of the choice, compared without regard to case as labels
/// are. It opens no transcoder yet.
std::pair<std::wstring, std::wstring> chooseByHand(const PlainList& supported, const PlainList& preferred)
{
    std::size_t chosen = 0;
    for (const std::wstring& wanted : preferred.m_vLabels) {
        const auto found =
            std::find_if(supported.m_vLabels.begin(), supported.m_vLabels.end(),
                         [&](const std::wstring& each) { return wcscasecmp(each.c_str(), wanted.c_str()) == 0; });
        if (found != supported.m_vLabels.end()) {
            chosen = static_cast<std::size_t>(found - supported.m_vLabels.begin());
            break;
        }
    }
    return {supported.m_vLabels[chosen], supported.m_vImplementations[chosen]};
}

Contest choices(const Lists& lists)
{
    std::vector<PlainList> preferred;
    for (const auto& each : lists.m_vPreferred) {
        preferred.push_back(plainListOf(*each));
    }
    const auto ours = [lists] {
        for (const auto& each : lists.m_vPreferred) {
            keep(lists.m_hResolver->getPreferredCharacterSet(*lists.m_hSupported, *each));
        }
    };
    const auto peer = [preferred, supported = plainListOf(*lists.m_hSupported)] {
        for (const PlainList& each : preferred) {
            keep(chooseByHand(supported, each));
        }
    };
    return {repeated(ours, preferred.size()), repeated(peer, preferred.size())};
}

}  // namespace

void addCharacterSetRows(std::vector<Situation>& rows, const Data& data)
{
    const char* const peer = "wcscasecmp loop over std::vector<std::wstring>";
    const Target target = {Target::kRatioAtLeast, 1};
    rows.push_back(
        {"getPreferredCharacterSet, the pack's lists", peer, target, [data] { return choices(packLists(data)); }});
    rows.push_back({"getPreferredCharacterSet, the pack's lists without UTF-8", peer, target,
                    [data] { return choices(withoutUtf8(packLists(data), 1000)); }});
    rows.push_back({"getPreferredCharacterSet, eight sets, mostly nothing in common", peer, target,
                    [data] { return choices(withoutUtf8(packLists(data), 8)); }});
}

}  // namespace bench
