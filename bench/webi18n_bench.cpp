#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>

#include "rows.h"

// webi18n_bench [--json FILE] [--row REGEX] [--quick] [--data DIR] [--headers FILE]
// --quick: fewer and shorter batches. Exit 0, 1 when a row cannot be measured, 2 for wrong usage.

namespace {

struct Arguments
{
    bench::Options m_tOptions;
    std::string m_sData = WEBI18N_BENCH_DATA;
    std::string m_sHeaders = WEBI18N_BENCH_HEADERS;
};

/// False for an unknown option or one without its value.
bool read(int count, char** texts, Arguments& arguments)
{
    for (int i = 1; i < count; ++i) {
        const std::string option = texts[i];
        std::string* value = nullptr;
        if (option == "--quick") {
            arguments.m_tOptions.m_bQuick = true;
            continue;
        }
        if (option == "--json") {
            value = &arguments.m_tOptions.m_sJsonFile;
        } else if (option == "--row") {
            value = &arguments.m_tOptions.m_sRowPattern;
        } else if (option == "--data") {
            value = &arguments.m_sData;
        } else if (option == "--headers") {
            value = &arguments.m_sHeaders;
        }
        if (value == nullptr || ++i == count) {
            return false;
        }
        *value = texts[i];
    }
    return true;
}

std::vector<bench::Situation> allRows(const Arguments& arguments)
{
    const bench::Data data{arguments.m_sData,
                           arguments.m_sData + "/localedefinitions.xml",
                           arguments.m_sData + "/localelists.xml",
                           arguments.m_sData + "/localemapping.xml",
                           arguments.m_sData + "/currencies.xml",
                           arguments.m_sData + "/charactersets.xml",
                           arguments.m_sData + "/charactersetlists.xml",
                           arguments.m_sData + "/messages",
                           arguments.m_sHeaders};
    std::vector<bench::Situation> rows;
    bench::addCatalogueRows(rows, data);
    bench::addMappingRows(rows, data);
    bench::addLocaleRows(rows);
    bench::addCurrencyRows(rows, data);
    bench::addCharacterSetRows(rows, data);
    bench::addDateRows(rows, data);
    bench::addRenderRows(rows, data);
    bench::addTranscodingRows(rows);
    bench::addCollatorRows(rows);
    bench::addSortKeyRows(rows);
    bench::addSortRows(rows);
    bench::addStartupRows(rows);
#ifdef WEBI18N_BENCH_SERVER
    bench::addServerRows(rows, data);
#endif
    return rows;
}

}  // namespace

int main(int count, char** texts)
{
    Arguments arguments;
    if (!read(count, texts, arguments)) {
        std::fputs("usage: webi18n_bench [--json FILE] [--row REGEX] [--quick] [--data DIR] [--headers FILE]\n",
                   stderr);
        return 2;
    }
    try {
        if (bench::run(allRows(arguments), arguments.m_tOptions) == 0) {
            throw std::runtime_error("no row has a name like that");
        }
        return 0;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "webi18n_bench: %s\n", problem.what());
        return 1;
    }
}
