#include "answers/sortanswer.h"

#include <algorithm>

#include "answers/keystamp.h"
#include "answers/text.h"

namespace answers {

namespace {

struct Line
{
    vel::i18n::RefCollationKey m_tKey;
    std::size_t m_nPlace;
};

}  // namespace

Json describeSorted(const std::vector<std::string>& lines, KeyMaker& maker, std::size_t mostBytes)
{
    vel::NarrowStringPool pool;
    std::vector<Line> order;
    std::size_t bytes = 0;
    for (std::size_t place = 0; place < lines.size(); ++place) {
        vel::i18n::RefCollationKey key;
        maker.makeKey(lines[place], pool, key);
        bytes += 2 * key.view().size() + lines[place].size();
        if (bytes > mostBytes) {
            throw TooLarge();
        }
        order.push_back({key, place});
    }
    std::stable_sort(order.begin(), order.end(), [](const Line& a, const Line& b) { return a.m_tKey < b.m_tKey; });
    Json json = stampAsJson(stampOf(maker.collator()));
    json["lines"] = Json::array();
    for (const Line& each : order) {
        Json line;
        line["key"] = hexadecimalText(each.m_tKey.view());
        line["text"] = lines[each.m_nPlace];
        line["place"] = each.m_nPlace;
        json["lines"].push_back(std::move(line));
    }
    return json;
}

}  // namespace answers
