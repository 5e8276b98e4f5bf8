// CGVStringArray: owned slots, copies, search, sort, archive layouts and text form.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/archive_bytes.h"
#include "support/buffer_content.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/platform/afxexcept.h"

namespace {

using Texts = std::vector<std::string>;

// Each item's text, "<empty>" for an empty slot.
Texts Items(CGVStringArray& a) {
    Texts out;
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

// Records what reaches its own mInit and mAdd, and adds upper-case copies.
struct Shouting : CGVStringArray {
    std::string calls;
    void mInit(int32_t size, int16_t step) override {
        calls += 'I';
        CGVStringArray::mInit(size, step);
    }
    void mAdd(void const* item) override {
        calls += 'A';
        if (item == nullptr)
            return;
        CGVString loud(*static_cast<CGVString const*>(item));
        loud.MakeUpper();
        CGVStringArray::mAdd(&loud);
    }
};

}  // namespace

TEST(CGVStringArray, DerivedArraysAreFilledThroughTheirOwnAdd) {
    Shouting read;
    std::istringstream in("U2 T1 a T2 bc ");  // the body after the tag
    read.Serialize(in);
    EXPECT_EQ((Texts{"A", "BC"}), Items(read));
    CGVStringArray source;
    AddAll(source, {"x", "y"});
    source.mInsertItem(1);  // an empty slot: mAdd sees a null and drops it
    Shouting assigned;
    AddAll(assigned, {"old"});
    assigned.calls.clear();
    static_cast<CGVStringArray&>(assigned) = source;
    EXPECT_EQ("IAAA", assigned.calls);
    EXPECT_EQ((Texts{"X", "Y"}), Items(assigned));
    EXPECT_EQ("AA", read.calls);
}

TEST(CGVStringArray, AddingInsertingAndIndexing) {
    CGVStringArray a;
    EXPECT_THROW(a[0], CInvalidArgException);
    a.mAdd(nullptr);
    AddAll(a, {"b", "c"});
    CGVString first("a");
    a.mInsertAtIndex(&first, 2), a.mSetArrayItem(&first, 2);  // at the count: nothing
    EXPECT_EQ((Texts{"b", "c"}), Items(a));
    a.mInsertAtIndex(&first, 0);
    CGVLong number(5);
    a.mAdd(&number);  // a copy that is no string: an empty slot
    a.mInsertItem(1);
    EXPECT_EQ((Texts{"a", "<empty>", "b", "c", "<empty>"}), Items(a));
    a.mSetArrayItem(&first, 4);
    a.mDeleteItem(0), a.mDeleteItem(9);
    EXPECT_EQ((Texts{"<empty>", "b", "c", "a"}), Items(a));
    EXPECT_THROW(a.mInsertItem(-1), CInvalidArgException);
    EXPECT_THROW(a.mDeleteItem(-1), CInvalidArgException);
    EXPECT_EQ((std::vector<int32_t>{0, -16}), (std::vector<int32_t>{a.mGetElementSize(), a.mSize()}));
    a[0] = "filled";  // an empty slot gets a string
    // beyond the count: the first string
    EXPECT_EQ((Texts{"b", "filled", "filled"}), (Texts{a[1].GetString(), a[4].GetString(), a[70].GetString()}));
}

TEST(CGVStringArray, CopyKeepsEmptySlotsAssignmentDropsThem) {
    CGVStringArray a, assigned;
    AddAll(a, {"x", "y"});
    a.mInsertItem(1);
    EXPECT_EQ((Texts{"x", "<empty>", "y"}), Items(*std::make_unique<CGVStringArray>(a)));
    AddAll(assigned, {"old"});
    assigned = a;
    EXPECT_EQ((Texts{"x", "y"}), Items(assigned));
    CGVArray generic(4, 16);  // through the generic assignment: no records to read
    generic = a;
    int32_t untouched = 5;
    generic.mGetArrayItem(&untouched, 0);
    EXPECT_EQ((std::vector<int32_t>{3, 5}), (std::vector<int32_t>{generic.mGetNumItems(), untouched}));
    std::unique_ptr<CGVObject> made(a.mNew());  // an empty generic array; no copy at all
    auto* fresh = dynamic_cast<CGVArray*>(made.get());
    ASSERT_NE(nullptr, fresh);
    EXPECT_EQ((std::vector<int32_t>{1, 0, 0}), (std::vector<int32_t>{a.mCopy() == nullptr,
              dynamic_cast<CGVStringArray*>(fresh) != nullptr, fresh->mGetNumItems()}));
}

TEST(CGVStringArray, FindSearchAndSort) {
    CGVStringArray a;
    a.mInsertItem(0);
    AddAll(a, {"abc", "", "Abc"});
    CGVString key("Abc"), empty;
    auto noCase = [](void const* item, void const* k) {
        return static_cast<CGVString const*>(item)->CompareNoCase(*static_cast<CGVString const*>(k));
    };
    // the empty slot leaves the working text empty for mFindString, and is skipped by mSearch
    EXPECT_EQ((std::vector<int32_t>{3, -1, 0, 3, 2, 1, -1, -1}),
              (std::vector<int32_t>{a.mFindString(CGVString("Abc")), a.mFindString(CGVString("ABC")),
                                    a.mFindString(CGVString("")), a.mSearch(&key), a.mSearch(&empty),
                                    a.mSearch(&key, noCase), a.mSearch(&key, [](void const*, void const*) { return 1; }),
                                    a.mSearch(nullptr)}));
    struct Row { SORTORDER order; Texts want; } rows[] = {
        {SORT_ASCENDING, {"<empty>", "a", "B", "c"}},
        {SORT_DESCENDING, {"c", "B", "a", "<empty>"}},
        {static_cast<SORTORDER>(2), {"c", "B", "a", "<empty>"}},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.order);
        CGVStringArray s;
        AddAll(s, {"c", "a", "B"});
        s.mInsertItem(1), s.mSort(row.order);
        EXPECT_EQ(row.want, Items(s));
        EXPECT_EQ(nullptr, GVGetSortArray());
    }
}

TEST(CGVStringArray, ArchiveTextAndBufferForms) {
    CGVStringArray a, back, into, empty;
    AddAll(a, {"ab", "c"});
    std::vector<BYTE> expected = gvtest::Header(-1, 16, 16, 2);
    gvtest::Put32(expected, 2);
    expected.insert(expected.end(), {2, 'a', 'b', 1, 'c'});
    EXPECT_EQ(expected, gvtest::Stored(a));
    gvtest::Load(expected, back);
    EXPECT_EQ((Texts{"ab", "c"}), Items(back));
    EXPECT_EQ(expected, gvtest::Stored(back));
    {
        gvtest::LoadingPolicy none(false, 0);  // nothing announced, nothing charged
        gvtest::Load(gvtest::Header(4, 16, 0, 0), back);
        EXPECT_EQ(0, back.mGetNumItems());
    }
    EXPECT_EQ(64, back.mSize());  // an older layout's element size is kept until the array is stored
    const std::vector<BYTE> stored = gvtest::Stored(back);
    EXPECT_EQ(gvtest::Header(-1, 16, 0, 0), std::vector<BYTE>(stored.begin(), stored.begin() + 14));
    EXPECT_EQ(-16, back.mSize());

    AddAll(a, {"a b", ""});
    std::ostringstream os, none;
    os << a, none << empty;
    EXPECT_EQ((Texts{"XU4 T2 ab T1 c T3 a b T0  ", "XU0 "}), (Texts{os.str(), none.str()}));
    CGVBuffer saved, nothing;
    a.mSave(saved);
    EXPECT_EQ(os.str(), gvtest::Content(saved));
    AddAll(into, {"one"});
    into.mLoad(saved);
    EXPECT_EQ((Texts{"one", "ab", "c", "a b", ""}), Items(into));
    into.mLoad(nothing);
    EXPECT_EQ(0, into.mGetNumItems());
    CGVStringArray big;  // a text form longer than one chunk of output
    AddAll(big, {std::string(40000, 'x').c_str(), std::string(40000, 'y').c_str()});
    std::ostringstream bigText;
    bigText << big;
    EXPECT_EQ(80020u, bigText.str().size());
    EXPECT_EQ("T40000 y", bigText.str().substr(40012, 8));
    std::vector<BYTE> shortOfStrings = gvtest::Header(-1, 16, 16, 3);  // three items, two strings
    gvtest::Put32(shortOfStrings, 2);
    shortOfStrings.insert(shortOfStrings.end(), {1, 'a', 1, 'b'});
    CGVStringArray damaged;
    gvtest::Load(shortOfStrings, damaged);
    EXPECT_EQ(3, damaged.mGetNumItems());
    EXPECT_THROW(damaged.mClear(), CInvalidArgException);  // the third item has no slot
    EXPECT_EQ(0, damaged.mGetNumItems());  // emptied all the same
    std::istringstream is(" XU4 T1 q T2 \n\n");  // count times a string, read or not
    std::unique_ptr<CGVObject> made(CGVObject::mNew(is));
    ASSERT_NE(nullptr, dynamic_cast<CGVStringArray*>(made.get()));
    EXPECT_EQ((Texts{"q", "\n\n", "", ""}), Items(static_cast<CGVStringArray&>(*made)));
}
