// CGVObject's defaults, the visitor's dispatch and the free stream operators.
#include <gtest/gtest.h>

#include <sstream>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/core/GVObject.h"
#include "gvlib/core/GVObjectVisitor.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/string/GVString.h"

namespace {

// A class that keeps every default, as a date or money value keeps some.
class Plain : public CGVObject {};

// Answers which slot was called, with the object's size or value and the argument.
class Visitor final : public CGVObjectVisitor {
public:
    int32_t mVisitBuffer(CGVBuffer* b, int32_t p) override { return 1000 + b->mGetLength() * 10 + p; }
    int32_t mVisitLong(CGVLong* v, int32_t p) override { return 2000 + v->mGetValue() * 10 + p; }
    int32_t mVisitString(CGVString* s, int32_t p) override { return 3000 + s->GetLength() * 10 + p; }
};

}  // namespace

TEST(CGVObject, DefaultsAreHarmlessAndVisitsDispatch) {
    Plain p, other;
    Visitor visitor;
    EXPECT_EQ(nullptr, p.mCopy());
    EXPECT_EQ(nullptr, p.mNew());
    EXPECT_EQ(0, p.mCompare(&other));
    EXPECT_EQ(0, p.mVisit(&visitor, 5));
    CGVBuffer b(3);
    CGVLong seven(7);
    CGVString s("xy");
    EXPECT_EQ(1037, static_cast<CGVObject&>(b).mVisit(&visitor, 7));
    EXPECT_EQ(2078, static_cast<CGVObject&>(seven).mVisit(&visitor, 8));
    EXPECT_EQ(3029, static_cast<CGVObject&>(s).mVisit(&visitor, 9));
    COleVariant v(int32_t{7});
    p.mConvertToOleVariant(&v);
    EXPECT_EQ(VT_I4, v.vt);
    std::ostringstream os;
    os << p;
    EXPECT_EQ("", os.str());
    // A class without a text form still consumes its one-character tag.
    std::istringstream is("  Zrest");
    std::string rest;
    is >> p >> rest;
    EXPECT_EQ("rest", rest);
}

TEST(CGVObject, AssignmentThroughTheRootThrowsTheText) {
    Plain p;
    CGVObject& root = p;
    try {
        root = CGVString("x");
        FAIL() << "no exception";
    } catch (const char* text) {
        EXPECT_STREQ("unsupported conversion", text);
    }
    EXPECT_THROW(root = CGVString("x"), const void*);  // a generic pointer handler catches it too
}

TEST(CGVObject, PlacementConstructionStillWorks) {
    alignas(CGVString) unsigned char storage[sizeof(CGVString)];
    CGVString* s = new (storage) CGVString("placed");
    EXPECT_STREQ("placed", *s);
    s->~CGVString();
}
