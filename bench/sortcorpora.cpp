#include "sortcorpora.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

constexpr const char* kWordList = "/usr/share/dict/american-english";

std::vector<std::u16string> words()
{
    std::ifstream file(kWordList);
    std::vector<std::u16string> texts;
    for (std::string line; std::getline(file, line);) {
        std::u16string text;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const auto byte = static_cast<unsigned char>(line[i]);
            // All that is not ASCII there has two bytes.
            text += byte < 0x80 ? char16_t{byte} : static_cast<char16_t>(((byte & 0x1F) << 6) | (line[i + 1] & 0x3F));
            i += byte < 0x80 ? 0 : 1;
        }
        texts.push_back(text);
    }
    if (texts.empty()) {
        throw std::runtime_error(std::string(kWordList) + " is missing: install what scripts/packages/bench.txt lists");
    }
    testsupport::shuffleTexts(texts);
    return texts;
}

std::vector<SortCorpus> makeCorpora()
{
    std::vector<SortCorpus> corpora = testsupport::nameCorpora();
    corpora.insert(corpora.begin() + 1, {"words", "en", words()});
    return corpora;
}

}  // namespace

const std::vector<SortCorpus>& sortCorpora()
{
    static const std::vector<SortCorpus> kCorpora = makeCorpora();
    return kCorpora;
}

}  // namespace bench
