#include <new>
#include <optional>

#include "documentsupport.h"
#include "failingallocator.h"
#include "temporaryfolder.h"
#include "vel/xml/xmlpath.h"

namespace {

using testsupport::FailingAllocations;
using testsupport::outstandingBlocks;
using vel::XmlDocument;

/// Runs `action` with its n-th allocation failing, for every n, until it needs no more; each failure must arrive as
/// bad_alloc and leave no block behind. Returns the number of allocations.
template <typename Action>
std::size_t failEveryAllocation(Action action)
{
    for (std::size_t nth = 0;; ++nth) {
        const std::ptrdiff_t before = outstandingBlocks();
        bool isDone = false;
        {
            const FailingAllocations failing(nth);
            try {
                action();
                isDone = true;
            } catch (const std::bad_alloc&) {
                isDone = false;
            }
            if (isDone && failing.hasFailed()) {
                ADD_FAILURE() << "allocation " << nth << " failed unnoticed";
            }
        }
        EXPECT_EQ(outstandingBlocks(), before) << nth;
        if (isDone || nth > 100000) {
            return nth;
        }
    }
}

std::string document()
{
    std::string bytes = "<?xml version='1.0'?><root xmlns='u' a='&lt;long enough to need a pool of its own&gt;'>";
    for (int i = 0; i < 100; ++i) {
        bytes += "<n" + std::to_string(i) + " b" + std::to_string(i) + "='v'>text &amp; more<x/></n" +
                 std::to_string(i) + ">\n";
    }
    return bytes + "</root>";
}

TEST(XmlFaults, EveryFailingAllocationOfALoadIsReported)
{
    const testsupport::TemporaryFolder folder;
    const vel::FilePath file = folder.write("a.xml", document());
    // The parser's own blocks, its buffer and the tree's blocks are among them.
    EXPECT_GT(failEveryAllocation([&] { XmlDocument::load(file); }), 20U);
}

TEST(XmlFaults, EveryFailingAllocationOfAUtf16ParseIsReported)
{
    std::string bytes = "\xFF\xFE";
    for (const char character : document()) {
        bytes.push_back(character);
        bytes.push_back('\0');
    }
    EXPECT_GT(failEveryAllocation([&] { XmlDocument::parse(bytes); }), 20U);
}

TEST(XmlFaults, EveryFailingAllocationOfARefusalIsReported)
{
    for (const std::string_view bytes :
         {"<a><b></a>", "<!DOCTYPE a><a/>", "<?xml version='1.0' encoding='latin1'?><a/>", "", "<a>\xFF</a>"}) {
        EXPECT_GT(failEveryAllocation([&] {
                      try {
                          XmlDocument::parse(bytes);
                          ADD_FAILURE() << "loaded";
                      } catch (const vel::XmlException&) {
                          return;
                      }
                  }),
                  0U);
    }
}

TEST(XmlFaults, EveryFailingAllocationOfAQueryIsReported)
{
    const XmlDocument loaded = XmlDocument::parse(document());
    const vel::XmlPath path(L"n7[@b7='v']/x");
    EXPECT_GT(failEveryAllocation([&] { EXPECT_EQ(loaded.root().select(path).size(), 1U); }), 0U);
    EXPECT_GT(failEveryAllocation([&] { loaded.root().toXmlText(); }), 0U);
    EXPECT_GT(failEveryAllocation([&] { loaded.root().innerText(); }), 0U);
    EXPECT_GT(failEveryAllocation([&] { vel::XmlPath(L"long-element-name[@long-attribute='v']/x"); }), 0U);
}

TEST(XmlFaults, DocumentsGiveTheirMemoryBack)
{
    const std::ptrdiff_t before = outstandingBlocks();
    {
        XmlDocument first = XmlDocument::parse(document());
        XmlDocument second = std::move(first);
        first = XmlDocument::parse("<a/>");
        EXPECT_GT(outstandingBlocks(), before);
    }
    EXPECT_EQ(outstandingBlocks(), before);
}

TEST(XmlFaults, ReadingAccessorsAllocateNothing)
{
    const XmlDocument loaded = XmlDocument::parse("<a b='1'>text<c/></a>");
    const testsupport::AllocationCount count;
    EXPECT_TRUE(loaded.root().innerTextView() == L"text");
    EXPECT_TRUE(loaded.root().hasAttribute(L"b") && loaded.root().name() == L"a");
    EXPECT_NE(loaded.root().firstChild(), nullptr);
    EXPECT_EQ(count.value(), 0U);
}

}  // namespace
