#include <libxml/parser.h>
#include <malloc.h>

#include <fstream>
#include <memory>
#include <stdexcept>

#include "bareparse.h"
#include "childprocess.h"
#include "rows.h"
#include "vel/config/configreader.h"
#include "vel/xml/xmldocument.h"

// Loading the whole pack, beside the least that any loader has to do (parsing the file with expat and dropping what it
// reports) and beside a general tree builder. Clearing away is not counted, for nobody.

namespace bench {

namespace {

constexpr double kMebibyte = 1024.0 * 1024.0;

using LibxmlTree = std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)>;

LibxmlTree parseWithLibxml(const std::string& name)
{
    LibxmlTree tree(
        xmlReadFile(name.c_str(), nullptr, XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_NOWARNING | XML_PARSE_NOERROR),
        xmlFreeDoc);
    if (!tree) {
        throw std::runtime_error(name + ": libxml2 cannot parse it");
    }
    return tree;
}

/// The first run of each `work` in a process, one process a batch.
template <typename Work>
Batch inFreshProcess(Work work)
{
    const Batch once = building(std::move(work));
    return [once](std::size_t) { return inChildProcess([&] { return once(1); }); };
}

/// Bytes of memory in use by the allocator.
double heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// Bytes of this process that lie in memory.
double residentSet()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmRSS:", 0) == 0) {
            return std::stod(line.substr(6)) * 1024;
        }
    }
    throw std::runtime_error("/proc/self/status: no VmRSS");
}

/// What holding a catalogue with the pack adds to `measured`, in a process of its own.
Batch costOfHolding(const Data& data, double (*measured)())
{
    return [data, measured](std::size_t) {
        return inChildProcess([&] {
            const vel::Handle<const vel::ConfigReader> config = packConfiguration(data);
            malloc_trim(0);
            const double before = measured();
            const vel::Handle<const vel::LocaleTagLookup> catalogue = loadCatalogue(data, *config);
            malloc_trim(0);
            return measured() - before;
        });
    };
}

auto loading(const Data& data)
{
    return [data, config = packConfiguration(data)] { return loadCatalogue(data, *config); };
}

/// The definitions alone: the peers read no other file either.
auto loadingDefinitions(const Data& data)
{
    const vel::Handle<const vel::ConfigReader> config = vel::makeHandle<vel::MemoryConfigReader>();
    return [data, config] { return loadCatalogue(data, *config); };
}

auto bareParse(const Data& data)
{
    return [file = data.m_sDefinitions] { return parseBare(file); };
}

auto libxmlTree(const Data& data)
{
    return [file = data.m_sDefinitions] { return parseWithLibxml(file); };
}

void addColdRows(std::vector<Situation>& rows, const Data& data)
{
    rows.push_back({"load the pack, first time in a process", "expat, empty handlers", {}, [data] {
                        return Contest{inFreshProcess(loading(data)), inFreshProcess(bareParse(data)), 1};
                    }});
    rows.push_back({"load the pack, first time in a process, tree", "libxml2 tree", {}, [data] {
                        return Contest{inFreshProcess(loading(data)), inFreshProcess(libxmlTree(data)), 1};
                    }});
}

void addMemoryRows(std::vector<Situation>& rows, const Data& data)
{
    const Target underSixMebibytes{Target::kOursBelow, 6 * kMebibyte};
    rows.push_back({"memory of the catalogue: resident set", "", underSixMebibytes,
                    [data] {
                        return Contest{costOfHolding(data, residentSet), {}, 1};
                    },
                    kBytes});
    rows.push_back({"memory of the catalogue: heap in use", "", underSixMebibytes,
                    [data] {
                        return Contest{costOfHolding(data, heapInUse), {}, 1};
                    },
                    kBytes});
}

}  // namespace

void addCatalogueRows(std::vector<Situation>& rows, const Data& data)
{
    // Before the warm rows: what they leave to the allocator would make the first time look warm.
    addColdRows(rows, data);
    addMemoryRows(rows, data);
    rows.push_back({"load the pack's definitions", "expat, empty handlers", {Target::kRatioAtLeast, 0.5}, [data] {
                        return Contest{building(loadingDefinitions(data)), building(bareParse(data))};
                    }});
    rows.push_back({"load the pack's definitions, tree", "libxml2 tree", {Target::kRatioAtLeast, 1.5}, [data] {
                        return Contest{building(loadingDefinitions(data)), building(libxmlTree(data))};
                    }});
    rows.push_back({"load definitions and allowed locales", "expat, empty handlers, definitions", {}, [data] {
                        return Contest{building(loading(data)), building(bareParse(data))};
                    }});
    rows.push_back({"XML tree of the pack alone", "expat, empty handlers", {}, [data] {
                        return Contest{building([data] { return vel::XmlDocument::load(data.definitions()); }),
                                       building(bareParse(data))};
                    }});
}

}  // namespace bench
