#pragma once

#include <map>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/flatindex.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "webi18n/currency.h"

namespace vel {

/// The catalogue of currencies: in the order of the file, by tag and by symbol. Loaded by one thread, then only read,
/// from any thread.
///
///     <Currencies>
///       <Currency tag="EUR" type="international" symbol="€" digits="2"/>
///       <Currency tag="loc:de-de" type="local" symbol="€" format="# $" locale="de-de">
///         <negative tag="trailing" format="# $-"/>
///       </Currency>
///     </Currencies>
///
/// A currency always offers the negative formats "minus" ("-" and its format) and "parens" (its format in brackets),
/// and prefers the first that its element declares, else "minus". Bad elements are skipped, never fatal.
class WEBI18N_API CurrencyLookup
{
public:
    using CurrencyMap = std::map<String, Handle<const Currency>, std::less<>>;
    using CurrencyList = std::vector<Handle<const Currency>>;

    /// The process's catalogue: created empty when the library is loaded.
    static CurrencyLookup& getInstance();

    CurrencyLookup();
    /// Loads a file; what loading throws passes.
    explicit CurrencyLookup(const String& path);
    ~CurrencyLookup();
    CurrencyLookup& operator=(const CurrencyLookup&) = delete;

    /// Adds a file's currencies to what is there: of two with one tag (or one symbol) the later is found, and both are
    /// listed. Throws XmlException for a file that cannot be read. Whatever it throws, the catalogue is unchanged.
    void loadCurrencies(const String& path);

    const CurrencyMap& getCurrencyMap() const noexcept { return m_tCurrencyMap; }
    /// Every accepted element in the order of the files.
    const CurrencyList& getCurrencyList() const noexcept { return m_tCurrencyList; }
    /// Exact; a null handle when absent.
    Handle<const Currency> lookupCurrencyTag(const String& tag) const;
    /// Exact; a null handle when absent. Currencies without a symbol are filed under the empty text.
    Handle<const Currency> lookupCurrencySymbol(const String& symbol) const;

private:
    // The list keeps the records alive that an index names.
    using Index = FlatIndex<const Currency*>;

    CurrencyLookup(const CurrencyLookup&);

    void add(const Handle<const Currency>& currency);
    void swap(CurrencyLookup& other) noexcept;

    CurrencyMap m_tCurrencyMap;
    CurrencyList m_tCurrencyList;
    Index m_tSymbolToCurrencyMap;
    Index m_tTagIndex;
};

}  // namespace vel
