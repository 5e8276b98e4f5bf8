// CGVObject's defaults and the free stream operators.
#include <gtest/gtest.h>

#include <sstream>

#include "gvlib/core/GVObject.h"
#include "gvlib/core/GVObjectVisitor.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/string/GVString.h"

namespace {

// A class that keeps every default, as a date or money value keeps some.
class Plain : public CGVObject {};

class CountingVisitor final : public CGVObjectVisitor {
public:
    int32_t mVisitBuffer(CGVBuffer*, int32_t param) override { return 100 + param; }
    int32_t mVisitLong(CGVLong*, int32_t param) override { return 200 + param; }
    int32_t mVisitString(CGVString*, int32_t param) override {
        ++strings;
        return 300 + param;
    }
    int strings = 0;
};

}  // namespace

TEST(CGVObject, DefaultsAreHarmless) {
    Plain p;
    Plain other;
    CountingVisitor visitor;
    EXPECT_EQ(nullptr, p.mCopy());
    EXPECT_EQ(nullptr, p.mNew());
    EXPECT_EQ(0, p.mCompare(&other));
    EXPECT_EQ(0, p.mVisit(&visitor, 5));
    EXPECT_EQ(0, visitor.strings);
    COleVariant v(int32_t{7});
    p.mConvertToOleVariant(&v);
    EXPECT_EQ(VT_I4, v.vt);
    std::ostringstream os;
    os << p;
    EXPECT_EQ("", os.str());
}

TEST(CGVObject, AssignmentThroughTheRootThrowsTheText) {
    Plain p;
    CGVString s("x");
    CGVObject& root = p;
    try {
        root = s;
        FAIL() << "no exception";
    } catch (const char* text) {
        EXPECT_STREQ("unsupported conversion", text);
    }
    EXPECT_THROW(root = s, const void*);  // a generic pointer handler catches it too
}

TEST(CGVObject, ExtractionTakesOneNonBlankCharacterForAnyClass) {
    // The body of a class without a text form: the tag is still consumed.
    std::istringstream is("  Zrest");
    Plain p;
    is >> p;
    std::string rest;
    is >> rest;
    EXPECT_EQ("rest", rest);
}

TEST(CGVObject, VisitorReachesTheString) {
    CountingVisitor visitor;
    CGVString s("text");
    CGVObject& obj = s;
    EXPECT_EQ(307, obj.mVisit(&visitor, 7));
    EXPECT_EQ(1, visitor.strings);
}

TEST(CGVObject, FactoryBuildsByTag) {
    std::istringstream is("  T3 a b T0  Q");
    CGVObject* first = CGVObject::mNew(is);
    ASSERT_NE(nullptr, dynamic_cast<CGVString*>(first));
    EXPECT_STREQ("a b", *static_cast<CGVString*>(first));
    CGVObject* second = CGVObject::mNew(is);
    ASSERT_NE(nullptr, second);
    EXPECT_STREQ("", *static_cast<CGVString*>(second));
    EXPECT_EQ(nullptr, CGVObject::mNew(is));  // unknown tag
    EXPECT_EQ(nullptr, CGVObject::mNew(is));  // exhausted
    delete first;
    delete second;
}

TEST(CGVObject, PlacementConstructionStillWorks) {
    alignas(CGVString) unsigned char storage[sizeof(CGVString)];
    CGVString* s = new (storage) CGVString("placed");
    EXPECT_STREQ("placed", *s);
    s->~CGVString();
}
