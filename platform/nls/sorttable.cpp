#include "vel/nls/sorttable.h"

#include <utility>

#include "binaryengine.h"
#include "icuengine.h"
#include "sharedplaces.h"
#include "sortname.h"
#include "tablebuilder.h"
#include "tableengine.h"

namespace vel::nls {

namespace {

constexpr std::string_view kBinary = "binary";
/// Counts the changes of what a table writes for a text.
constexpr int kFormatVersion = 2;

using TablePlaces = SharedPlaces<SortTable>;
using EnginePlaces = SharedPlaces<SortEngine>;

constinit TablePlaces g_tables;
constinit EnginePlaces g_engines;

/// Keeps the place of an engine for as long as the engine lives.
class PlacedEngine
{
public:
    PlacedEngine(std::shared_ptr<EnginePlaces::Place> place, std::unique_ptr<const SortEngine> engine)
        : m_pPlace(std::move(place)), m_pEngine(std::move(engine))
    {}

    const SortEngine* get() const noexcept { return m_pEngine.get(); }

private:
    std::shared_ptr<EnginePlaces::Place> m_pPlace;
    std::unique_ptr<const SortEngine> m_pEngine;
};

std::unique_ptr<const SortEngine> buildEngine(const SortName& name)
{
    const UCollator* collator = name.m_pCollator.get();
    if (ElementRules(collator).hasCaseLevel()) {
        return std::make_unique<IcuEngine>(collator);
    }
    return std::make_unique<TableEngine>(buildSortData(collator, name.m_sLocale),
                                         collationVersion(collator) + "/" + std::to_string(kFormatVersion));
}

std::shared_ptr<const SortEngine> sharedEngine(const SortName& name)
{
    return g_engines.findOrAdd(name.m_sOrder)->get([&](std::shared_ptr<EnginePlaces::Place> place) {
        const auto placed = std::make_shared<PlacedEngine>(std::move(place), buildEngine(name));
        return std::shared_ptr<const SortEngine>(placed, placed->get());
    });
}

template <typename MakeEngine>
std::shared_ptr<const SortTable> sharedTable(const std::string& canonical, std::string_view name, MakeEngine makeEngine)
{
    return g_tables.findOrAdd(canonical, name)->get([&](std::shared_ptr<TablePlaces::Place> place) {
        return std::make_shared<const SortTable>(canonical, makeEngine(), std::move(place));
    });
}

}  // namespace

std::shared_ptr<const SortTable> SortTable::open(std::string_view name)
{
    if (const std::shared_ptr<TablePlaces::Place> place = g_tables.find(name)) {
        // A place without its value is one whose builder has not come to it yet, or failed.
        if (std::shared_ptr<const SortTable> table = place->get([](const auto&) { return nullptr; })) {
            return table;
        }
    }
    if (isBinaryName(name)) {
        return sharedTable(std::string(kBinary), name, [] { return std::make_shared<const BinaryEngine>(); });
    }
    const std::optional<SortName> resolved = resolveSortName(name);
    if (!resolved) {
        return nullptr;
    }
    return sharedTable(resolved->m_sCanonical, name, [&] { return sharedEngine(*resolved); });
}

SortTable::SortTable(std::string name, std::shared_ptr<const SortEngine> engine, std::shared_ptr<void> place)
    : m_sName(std::move(name)), m_pEngine(std::move(engine)), m_pPlace(std::move(place))
{}

SortTable::~SortTable()
{
    m_pEngine.reset();
}

std::size_t SortTable::makeKey(const unsigned char* utf16be, std::size_t byteCount, SortStrength strength,
                               unsigned char* out, std::size_t capacity) const
{
    return m_pEngine->makeKey(utf16be, byteCount, strength, out, capacity);
}

int SortTable::compare(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb, SortStrength strength) const
{
    return m_pEngine->compare(a, na, b, nb, strength);
}

std::string SortTable::version() const
{
    return m_pEngine->version();
}

std::size_t SortTable::memory() const noexcept
{
    return m_pEngine->memory();
}

}  // namespace vel::nls
