// CGVObject: the defaults, the visitor's dispatch and construction in place.
// The refused assignment is checked with the arrays that keep it.
#include <gtest/gtest.h>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/core/GVObjectVisitor.h"
#include "gvlib/string/GVString.h"

namespace {

// Answers which slot was called, with the object's size or value and the argument.
class Visitor final : public CGVObjectVisitor {
public:
    int32_t mVisitBuffer(CGVBuffer* b, int32_t p) override { return 1000 + b->mGetLength() * 10 + p; }
    int32_t mVisitLong(CGVLong* v, int32_t p) override { return 2000 + v->mGetValue() * 10 + p; }
    int32_t mVisitString(CGVString* s, int32_t p) override { return 3000 + s->GetLength() * 10 + p; }
};

}  // namespace

TEST(CGVObject, DefaultsVisitsAndPlacement) {
    CGVObject plain;
    Visitor visitor;
    EXPECT_EQ(nullptr, plain.mCopy());
    EXPECT_EQ(0, plain.mCompare(&plain));
    EXPECT_EQ(0, plain.mVisit(&visitor, 5));
    CGVBuffer b(3);
    CGVLong seven(7);
    CGVString s("xy");
    EXPECT_EQ(1037, static_cast<CGVObject&>(b).mVisit(&visitor, 7));
    EXPECT_EQ(2078, static_cast<CGVObject&>(seven).mVisit(&visitor, 8));
    EXPECT_EQ(3029, static_cast<CGVObject&>(s).mVisit(&visitor, 9));
    // The class's own operator new must not hide placement new.
    alignas(CGVString) unsigned char storage[sizeof(CGVString)];
    CGVString* placed = new (storage) CGVString("placed");
    EXPECT_STREQ("placed", *placed);
    placed->~CGVString();
}
