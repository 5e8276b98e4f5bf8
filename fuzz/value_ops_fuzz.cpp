// Builds CGVString, CGVBuffer and CGVMoney values from arbitrary bytes and runs
// a program read from the same bytes: each step picks an operation and takes its
// numbers and texts from the input. A few properties that hold for any input are
// checked on the way (lengths of joined texts, a mirror of the buffer's bytes).
#include <gvlib/gvlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>

#include "byte_reader.h"

namespace {

struct Reader : ByteReader {
    int32_t Int() { return static_cast<int32_t>(Bits(4)); }
    // Small numbers around the interesting boundaries, occasionally any 32-bit value.
    int32_t Number() {
        uint8_t b = Byte();
        return (b & 0x80) ? Int() : static_cast<int32_t>(b) - 64;
    }
};

void Fail(char const* what) {
    fprintf(stderr, "property failed: %s\n", what);
    abort();
}

std::string Text(CGVString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }

struct State {
    CGVString str;
    CGVString other;
    CGVBuffer buf;
    std::string mirror;  // what buf must hold while the mirror is trusted
    bool mirrored = true;
    CGVMoney money;
    CGVMoney money2;
};

void StringStep(State& s, Reader& in, uint8_t op) {
    switch (op % 16) {
    case 0: {
        std::string t = in.Bytes();
        s.other.SetString(t.data(), static_cast<int>(t.size()));
        break;
    }
    case 1: {
        int32_t i = in.Number();
        try {
            char c = s.str.GetAt(i);
            if (i >= s.str.GetLength() && c != '\0')
                Fail("GetAt past the end is NUL");
            (void)s.str[i];
            s.str.SetAt(i, static_cast<char>(in.Byte()));
        } catch (CInvalidArgException const&) {
            if (i >= 0)
                Fail("only a negative index raises");
        }
        break;
    }
    case 2:
        s.str.Compare(s.other);
        s.str.CompareNoCase(s.other);
        s.str.Collate(s.other);
        s.str.CollateNoCase(s.other);
        s.str.mCompare(&s.other);
        s.str.mCompare(&s.money);
        break;
    case 3: {
        int32_t a = in.Number(), b = in.Number();
        CGVString m1 = s.str.Mid(a), m2 = s.str.Mid(a, b), l = s.str.Left(a), r = s.str.Right(b);
        for (CGVString const* part : {&m1, &m2, &l, &r})
            if (part->GetLength() > s.str.GetLength())
                Fail("a substring is no longer than its text");
        break;
    }
    case 4: {
        int results[] = {s.str == s.other, s.str != s.other, s.str < s.other, s.str > s.other,
                          s.str <= s.other, s.str >= s.other};
        if (results[0] == results[1] || results[2] + results[3] + results[0] != 1)
            Fail("exactly one of <, ==, > holds");
        char const* c = s.other;
        (void)(s.str == c), (void)(s.str < c), (void)(c < s.str), (void)(c >= s.str);
        break;
    }
    case 5: {
        CGVString joined = s.str + s.other;
        size_t a = strlen(s.str), b = strlen(s.other);
        if (static_cast<size_t>(joined.GetLength()) != (a < static_cast<size_t>(s.str.GetLength()) ? a : a + b))
            Fail("a concatenation is cut at its first NUL");
        (void)(s.str + 'x'), (void)('x' + s.str), (void)(s.str + static_cast<char const*>(s.other));
        (void)(static_cast<char const*>(s.other) + s.str);
        break;
    }
    case 6:
        if (s.str.GetLength() < 4096)
            s.str += s.other;
        break;
    case 7:
        s.str += static_cast<char>(in.Byte());
        s.str += static_cast<char const*>(s.other);
        break;
    case 8:
        s.str = static_cast<char>(in.Byte());
        break;
    case 9:
        s.str = s.other;
        break;
    case 10: {
        std::unique_ptr<CGVObject> copy(s.str.mCopy()), fresh(s.str.mNew());
        if (copy->mCompare(&s.str) != 0 && s.str.mCompare(&s.str) != -2)
            Fail("a copy compares equal");
        *fresh = s.str;
        *fresh = s.money;
        break;
    }
    case 11: {
        std::stringstream ss;
        ss << s.str;
        CGVString back;
        ss >> back;
        break;
    }
    case 12: {
        COleVariant v;
        s.str.mConvertToOleVariant(&v);
        s.other.mConvertFromOleVariant(v);
        break;
    }
    case 13: {
        std::wstring w;
        for (char c : Text(s.other.Left(64)))
            w += static_cast<wchar_t>(static_cast<unsigned char>(c) * 37);
        s.str = w.c_str();
        break;
    }
    case 14: {
        CGVString repeated(static_cast<char>(in.Byte()), in.Byte() - 16);
        s.other = repeated;
        break;
    }
    default:
        s.str.mClear();
        s.str = reinterpret_cast<unsigned char const*>(static_cast<char const*>(s.other));
        break;
    }
}

void CheckMirror(State const& s) {
    if (!s.mirrored)
        return;
    if (static_cast<size_t>(s.buf.mGetLength()) != s.mirror.size() ||
        (s.mirror.size() && std::memcmp(s.buf.mGetBuffer(), s.mirror.data(), s.mirror.size()) != 0))
        Fail("the buffer holds what was put into it");
}

// An append goes on from a length mRollBack set, even one far past the block,
// and grows the block to hold it: gigabytes by design, so not fuzzed here.
bool Appendable(State const& s) {
    return s.buf.mGetLength() < 65536;
}

void BufferStep(State& s, Reader& in, uint8_t op) {
    // While locked, a step that needs a bigger block changes nothing; the mirror
    // does not model that and is trusted again after the next fresh content.
    if (s.buf.mIsLocked())
        s.mirrored = false;
    switch (op % 12) {
    case 0: {
        std::string t = in.Bytes();
        if (t.size() & 1) {
            s.buf.mInit(t.data(), static_cast<int32_t>(t.size()));
            s.mirror = t;
        } else {
            int32_t n = in.Number() & 0x3FF;
            s.buf.mInit(nullptr, n);
            s.mirror.assign(static_cast<size_t>(n), '\0');
        }
        s.mirrored = !s.buf.mIsLocked();
        break;
    }
    case 1: {
        std::string t = in.Bytes();
        if (Appendable(s)) {
            s.buf.mConcat(t.data(), static_cast<int32_t>(t.size()));
            s.mirror += t;
        }
        break;
    }
    case 2: {
        std::string find = in.Bytes(), repl = in.Bytes();
        if (s.buf.mGetLength() < 65536 && !s.buf.mIsLocked()) {
            s.buf.mReplaceAll(find.c_str(), repl.c_str());
            s.mirrored = false;
        }
        break;
    }
    case 3: {
        int32_t n = in.Number() & 0x3FF;
        if (!Appendable(s))
            break;
        char* p = s.buf.mLockBuffer(n);
        if (p != nullptr) {
            uint8_t k = in.Byte();
            int32_t used = n ? k % (n + 1) : 0;
            std::memset(p, 'w', static_cast<size_t>(used));
            s.buf.mUnlock(used);
            s.mirror.append(static_cast<size_t>(used), 'w');
        }
        break;
    }
    case 4:
        // Locked and left locked: the block must stay where it is.
        if (Appendable(s) && s.buf.mLockBuffer(in.Byte()) != nullptr &&
            s.buf.mLockBuffer(1) != nullptr)
            Fail("a locked buffer refuses a second lock");
        break;
    case 5:
        s.buf.mUnlock(in.Number());
        s.mirrored = false;
        break;
    case 6:
        s.buf.mRollBack(in.Number());
        s.mirrored = false;
        break;
    case 7:
        s.buf.mClearBuffer();
        s.mirror.clear();
        s.mirrored = !s.buf.mIsLocked();
        break;
    case 8:
        if (!s.buf.mIsLocked()) {
            s.buf.mClear();
            s.mirror.clear();
            s.mirrored = true;
        }
        break;
    case 9: {
        std::unique_ptr<CGVObject> copy(s.buf.mCopy());
        if (copy->mCompare(&s.buf) != 0)
            Fail("a copy compares equal");
        CGVBuffer other;
        other = s.buf;
        other += static_cast<char const*>(s.other);
        s.buf.mCompare(&other);
        s.buf.mIsNull();
        (void)static_cast<char const*>(s.buf);
        break;
    }
    case 10: {
        // A length rolled forward is written out in full, as zeros past the
        // block: gigabytes for a large one, by design. Not what is fuzzed here.
        if (s.buf.mGetLength() > (16 << 20))
            break;
        std::stringstream ss;
        ss << s.buf;
        CGVBuffer back;
        ss >> back;
        COleVariant v;
        s.buf.mConvertToOleVariant(&v);
        back.mConvertFromOleVariant(v);
        break;
    }
    default: {
        CGVBuffer sized(in.Number() & 0x3FF, static_cast<int32_t>(in.Number()));
        sized.mConcat(s.mirror.data(), static_cast<int32_t>(s.mirror.size()));
        break;
    }
    }
}

void MoneyStep(State& s, Reader& in, uint8_t op) {
    switch (op % 10) {
    case 0:
        s.money = CGVMoney(static_cast<int32_t>(in.Int()));
        break;
    case 1: {
        double d;
        int32_t bits[2] = {in.Int(), in.Int()};
        std::memcpy(&d, bits, sizeof d);
        s.money2 = CGVMoney(d);
        s.money2.mSetAmount(d);
        break;
    }
    case 2:
        s.money = CGVMoney(s.other);
        break;
    case 3:
        s.money.mSetWholeAmount(in.Int());
        s.money.mSetFractionalAmount(in.Int());
        break;
    case 4: {
        int32_t k = in.Number();
        std::unique_ptr<CGVMoney> results[] = {std::unique_ptr<CGVMoney>(&(s.money + s.money2)),
                                               std::unique_ptr<CGVMoney>(&(s.money - s.money2)),
                                               std::unique_ptr<CGVMoney>(&(s.money * k)),
                                               std::unique_ptr<CGVMoney>(&(s.money / k))};
        (void)results;
        break;
    }
    case 5: {
        int32_t k = in.Number();
        s.money += s.money2;
        s.money -= s.money2;
        s.money *= k;
        s.money /= in.Number();
        break;
    }
    case 6: {
        int results = (s.money == s.money2) + (s.money < s.money2) + (s.money > s.money2);
        (void)(s.money != s.money2), (void)(s.money <= s.money2), (void)(s.money >= s.money2);
        if (results != 1 && !(s.money.mGetAmount() != s.money.mGetAmount()))
            Fail("exactly one of <, ==, > holds for money");
        break;
    }
    case 7: {
        CGVString text = s.money;
        (void)static_cast<int32_t>(s.money), (void)static_cast<double>(s.money);
        s.money2 = CGVMoney(text);
        break;
    }
    case 8: {
        std::unique_ptr<CGVObject> copy(s.money.mCopy()), fresh(s.money.mNew());
        *fresh = *copy;
        *fresh = s.str;
        s.money.mCompare(copy.get());
        s.money.mCompare(nullptr);
        s.money.mCompare(&s.str);
        break;
    }
    default: {
        COleVariant v;
        s.money.mConvertToOleVariant(&v);
        s.money2.mConvertFromOleVariant(v);
        s.money.mGetWholeAmount();
        s.money.mGetFractionalAmount();
        break;
    }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    Reader in{{data, size}};
    State s;
    std::string first = in.Bytes();
    s.str.SetString(first.data(), static_cast<int>(first.size()));
    // A bounded program: each step takes at least one byte.
    for (int step = 0; step < 256 && !in.Done(); ++step) {
        uint8_t op = in.Byte();
        switch (op % 3) {
        case 0:
            StringStep(s, in, static_cast<uint8_t>(op / 3));
            break;
        case 1:
            BufferStep(s, in, static_cast<uint8_t>(op / 3));
            CheckMirror(s);
            break;
        default:
            MoneyStep(s, in, static_cast<uint8_t>(op / 3));
            break;
        }
    }
    if (s.buf.mIsLocked())
        s.buf.mUnlock(0);
    return 0;
}
