// The tree control's items, as a window below HWND_MESSAGE holds them with nothing on the screen.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/loops.h"

namespace
{

struct TreeTest : testing::Test {
    HWND tree = CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                GetModuleHandleA(nullptr), nullptr);

    ~TreeTest() override
    {
        DestroyWindow(tree);
    }

    HTREEITEM Insert(const std::string &label, HTREEITEM parent = TVI_ROOT, LPARAM value = 0)
    {
        return InsertItem(tree, label, parent, value);
    }

    HTREEITEM Next(WPARAM relation, HTREEITEM item = nullptr)
    {
        return (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, relation, (LPARAM)item);
    }

    bool Delete(HTREEITEM item)
    {
        return SendMessageA(tree, TVM_DELETEITEM, 0, (LPARAM)item) != 0;
    }

    bool Get(HTREEITEM item, TVITEMA *out)
    {
        out->hItem = item;
        return SendMessageA(tree, TVM_GETITEMA, 0, (LPARAM)out) != 0;
    }

    // Label and value of every item on one level, from the first on: "label=value ...".
    std::string Level(HTREEITEM first)
    {
        std::string all;
        for (HTREEITEM item = first; item; item = Next(TVGN_NEXT, item)) {
            char text[300] = "";
            TVITEMA got = {};
            got.mask = TVIF_TEXT | TVIF_PARAM;
            got.pszText = text;
            got.cchTextMax = sizeof text;
            if (!Get(item, &got))
                return all + "(dead)";
            all += std::string(all.empty() ? "" : ", ") + text + "=" + std::to_string(got.lParam);
        }
        return all;
    }
};

TEST_F(TreeTest, KeepsSiblingsSortedWithoutCaseAndEqualsInTheOrderTheyCame)
{
    HTREEITEM top = Insert("Folder");
    const struct {
        std::vector<const char *> labels;
        const char *shown;
    } cases[] = {
        {{"2 (7 bytes)", "beta", "10 (40 bytes)", "Alpha1234", "1 (9 bytes)"},
         "1 (9 bytes)=4, 10 (40 bytes)=2, 2 (7 bytes)=0, Alpha1234=3, beta=1"},
        // Also when they come after a look.
        {{"alpha1233", "ALPHA", "beta", "Beta", "alpha1234x", "alpha12345", "zeta1", "Zeta"},
         "1 (9 bytes)=4, 10 (40 bytes)=2, 2 (7 bytes)=0, ALPHA=6, alpha1233=5, Alpha1234=3, "
         "alpha12345=10, alpha1234x=9, beta=1, beta=7, Beta=8, Zeta=12, zeta1=11"},
    };
    LPARAM value = 0;
    for (const auto &[labels, shown] : cases) {
        for (const char *label : labels)
            Insert(label, top, value++);
        EXPECT_EQ(Level(Next(TVGN_CHILD, top)), shown);
    }
}

TEST_F(TreeTest, DeletingTheRootEmptiesTheTreeForNewItems)
{
    HTREEITEM top = Insert("top"), second = Insert("second");
    HTREEITEM below = Insert("below", top, 1);
    HTREEITEM deeper = Insert("deeper", below, 2);
    EXPECT_TRUE(Delete(TVI_ROOT));
    EXPECT_EQ(Next(TVGN_ROOT), nullptr);
    TVITEMA got = {};
    got.mask = TVIF_PARAM;
    for (HTREEITEM dead : {top, second, below, deeper}) {
        EXPECT_FALSE(Get(dead, &got));
        EXPECT_EQ(Insert("orphan", dead), nullptr);
        EXPECT_EQ(Next(TVGN_CHILD, dead), nullptr);
        EXPECT_EQ(Next(TVGN_NEXT, dead), nullptr);
    }
    EXPECT_TRUE(Delete(TVI_ROOT));
    for (int i = 0; i < 3; ++i)
        Insert("new", Insert("again"), 2);
    EXPECT_EQ(Level(Next(TVGN_ROOT)), "again=0, again=0, again=0");
}

} // namespace
