// CGVObject's defaults, the factory and the free stream operators.
#include <gtest/gtest.h>

#include <memory>
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
    int32_t mVisitString(CGVString*, int32_t param) override { return 300 + param; }
};

}  // namespace

TEST(CGVObject, DefaultsAreHarmless) {
    Plain p, other;
    CountingVisitor visitor;
    EXPECT_EQ(nullptr, p.mCopy());
    EXPECT_EQ(nullptr, p.mNew());
    EXPECT_EQ(0, p.mCompare(&other));
    EXPECT_EQ(0, p.mVisit(&visitor, 5));
    CGVString s("x");
    EXPECT_EQ(307, static_cast<CGVObject&>(s).mVisit(&visitor, 7));
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

TEST(CGVObject, FactoryBuildsByTag) {
    std::istringstream is("  T3 a b T0  Q");
    std::unique_ptr<CGVObject> first(CGVObject::mNew(is)), second(CGVObject::mNew(is));
    ASSERT_NE(nullptr, dynamic_cast<CGVString*>(first.get()));
    ASSERT_NE(nullptr, dynamic_cast<CGVString*>(second.get()));
    EXPECT_STREQ("a b", *static_cast<CGVString*>(first.get()));
    EXPECT_STREQ("", *static_cast<CGVString*>(second.get()));
    EXPECT_EQ(nullptr, CGVObject::mNew(is));  // unknown tag
    EXPECT_EQ(nullptr, CGVObject::mNew(is));  // exhausted
}

TEST(CGVObject, PlacementConstructionStillWorks) {
    alignas(CGVString) unsigned char storage[sizeof(CGVString)];
    CGVString* s = new (storage) CGVString("placed");
    EXPECT_STREQ("placed", *s);
    s->~CGVString();
}
