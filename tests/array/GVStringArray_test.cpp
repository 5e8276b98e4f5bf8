// CGVStringArray: owned slots, copies, search, sort, archive layouts and text form.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/archive_bytes.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxexcept.h"

namespace {

// Each item's text, "<empty>" for an empty slot.
std::vector<std::string> Items(CGVStringArray& a) {
    std::vector<std::string> out;
    for (int32_t i = 0; i < a.mGetNumItems(); ++i) {
        CGVString text("<empty>");
        a.mGetArrayItem(&text, i);
        out.emplace_back(text.GetString(), static_cast<size_t>(text.GetLength()));
    }
    return out;
}

void AddAll(CGVStringArray& a, std::vector<const char*> const& texts) {
    for (const char* t : texts) {
        CGVString s(t);
        a.mAdd(&s);
    }
}

}  // namespace

TEST(CGVStringArray, AddingAndInserting) {
    CGVStringArray a;
    a.mAdd(nullptr);
    EXPECT_EQ(0, a.mGetNumItems());
    AddAll(a, {"b", "c"});
    CGVString first("a");
    a.mInsertAtIndex(&first, 2);  // at the count: nothing
    EXPECT_EQ((std::vector<std::string>{"b", "c"}), Items(a));
    a.mInsertAtIndex(&first, 0);
    EXPECT_EQ((std::vector<std::string>{"a", "b", "c"}), Items(a));
    CGVLong number(5);
    a.mAdd(&number);  // a copy that is no string: an empty slot
    a.mInsertItem(1);
    EXPECT_EQ((std::vector<std::string>{"a", "<empty>", "b", "c", "<empty>"}), Items(a));
    a.mSetArrayItem(&first, 4);
    a.mDeleteItem(0);
    a.mDeleteItem(9);
    EXPECT_EQ((std::vector<std::string>{"<empty>", "b", "c", "a"}), Items(a));
    EXPECT_THROW(a.mInsertItem(-1), CInvalidArgException);
    EXPECT_THROW(a.mDeleteItem(-1), CInvalidArgException);
    EXPECT_EQ(0, a.mGetElementSize());
    EXPECT_EQ(-16, a.mSize());
}

TEST(CGVStringArray, IndexBeyondTheCountGivesTheFirstString) {
    CGVStringArray a;
    EXPECT_THROW(a[0], CInvalidArgException);
    AddAll(a, {"first", "second"});
    EXPECT_STREQ("first", a[2].GetString());
    EXPECT_STREQ("first", a[7].GetString());
    EXPECT_STREQ("second", a[1].GetString());
    a.mInsertItem(0);
    a[0] = "filled";
    EXPECT_EQ((std::vector<std::string>{"filled", "first", "second"}), Items(a));
}

TEST(CGVStringArray, CopyKeepsEmptySlotsAssignmentDropsThem) {
    CGVStringArray a;
    AddAll(a, {"x", "y"});
    a.mInsertItem(1);
    CGVStringArray copied(a);
    EXPECT_EQ((std::vector<std::string>{"x", "<empty>", "y"}), Items(copied));
    CGVStringArray assigned;
    AddAll(assigned, {"old"});
    assigned = a;
    EXPECT_EQ((std::vector<std::string>{"x", "y"}), Items(assigned));
    EXPECT_EQ(nullptr, a.mCopy());
    std::unique_ptr<CGVObject> made(a.mNew());
    EXPECT_EQ(nullptr, dynamic_cast<CGVStringArray*>(made.get()));
    ASSERT_NE(nullptr, dynamic_cast<CGVArray*>(made.get()));
    EXPECT_EQ(0, static_cast<CGVArray*>(made.get())->mGetNumItems());
}

TEST(CGVStringArray, FindAndSearch) {
    CGVStringArray a;
    a.mInsertItem(0);
    AddAll(a, {"abc", "", "Abc"});
    EXPECT_EQ(3, a.mFindString(CGVString("Abc")));
    EXPECT_EQ(-1, a.mFindString(CGVString("ABC")));
    EXPECT_EQ(0, a.mFindString(CGVString("")));  // the empty slot leaves the working text empty
    CGVString key("Abc");
    EXPECT_EQ(3, a.mSearch(&key));
    CGVString empty;
    EXPECT_EQ(2, a.mSearch(&empty));
    auto noCase = [](void const* item, void const* k) {
        return static_cast<CGVString const*>(item)->CompareNoCase(*static_cast<CGVString const*>(k));
    };
    EXPECT_EQ(1, a.mSearch(&key, noCase));
    EXPECT_EQ(-1, a.mSearch(&key, [](void const*, void const*) { return 1; }));
}

TEST(CGVStringArray, DefaultSortFollowsTheCollation) {
    struct Row {
        SORTORDER order;
        std::vector<std::string> want;
    } rows[] = {
        {SORT_ASCENDING, {"<empty>", "a", "B", "c"}},
        {SORT_DESCENDING, {"c", "B", "a", "<empty>"}},
        {static_cast<SORTORDER>(2), {"c", "B", "a", "<empty>"}},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.order);
        CGVStringArray a;
        AddAll(a, {"c", "a", "B"});
        a.mInsertItem(1);
        a.mSort(row.order);
        EXPECT_EQ(row.want, Items(a));
        EXPECT_EQ(nullptr, GVGetSortArray());
    }
}

TEST(CGVStringArray, ArchiveStringLayout) {
    CGVStringArray a;
    AddAll(a, {"ab", "c"});
    std::vector<BYTE> expected = gvtest::Header(-1, 16, 16, 2);
    gvtest::Put32(expected, 2);
    for (BYTE b : std::initializer_list<BYTE>{2, 'a', 'b', 1, 'c'})
        expected.push_back(b);
    EXPECT_EQ(expected, gvtest::Stored(a));
    CGVStringArray back;
    gvtest::Load(expected, back);
    EXPECT_EQ((std::vector<std::string>{"ab", "c"}), Items(back));
    EXPECT_EQ(expected, gvtest::Stored(back));
}

TEST(CGVStringArray, TextFormAndBuffer) {
    CGVStringArray a;
    AddAll(a, {"a b", ""});
    std::ostringstream os;
    os << a;
    EXPECT_EQ("XU2 T3 a b T0  ", os.str());
    CGVStringArray empty;
    std::ostringstream none;
    none << empty;
    EXPECT_EQ("XU0 ", none.str());

    CGVBuffer saved;
    a.mSave(saved);
    EXPECT_EQ(os.str(), std::string(saved.mGetBuffer(), static_cast<size_t>(saved.mGetLength())));
    CGVStringArray into;
    AddAll(into, {"one"});
    into.mLoad(saved);
    EXPECT_EQ((std::vector<std::string>{"one", "a b", ""}), Items(into));
    CGVBuffer nothing;
    into.mLoad(nothing);
    EXPECT_EQ(0, into.mGetNumItems());

    std::istringstream is(" XU4 T1 q T2 \n\n");  // count times a string, read or not
    std::unique_ptr<CGVObject> made(CGVObject::mNew(is));
    auto* strings = dynamic_cast<CGVStringArray*>(made.get());
    ASSERT_NE(nullptr, strings);
    EXPECT_EQ((std::vector<std::string>{"q", "\n\n", "", ""}), Items(*strings));
}
