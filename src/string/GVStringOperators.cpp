// CGVString's 30 comparison operators and 5 concatenations. Every comparison is
// decided by the case-sensitive Compare; a text on the left reverses the sense.
#include "gvlib/string/GVString.h"

int CGVString::operator==(CGVString const& right) { return Compare(right) == 0; }
int CGVString::operator!=(CGVString const& right) { return Compare(right) != 0; }
int CGVString::operator<(CGVString const& right) { return Compare(right) < 0; }
int CGVString::operator>(CGVString const& right) { return Compare(right) > 0; }
int CGVString::operator<=(CGVString const& right) { return Compare(right) <= 0; }
int CGVString::operator>=(CGVString const& right) { return Compare(right) >= 0; }
int CGVString::operator==(char const* right) { return Compare(right) == 0; }
int CGVString::operator!=(char const* right) { return Compare(right) != 0; }
int CGVString::operator<(char const* right) { return Compare(right) < 0; }
int CGVString::operator>(char const* right) { return Compare(right) > 0; }
int CGVString::operator<=(char const* right) { return Compare(right) <= 0; }
int CGVString::operator>=(char const* right) { return Compare(right) >= 0; }

int operator==(CGVString const& left, CGVString const& right) { return left.Compare(right) == 0; }
int operator!=(CGVString const& left, CGVString const& right) { return left.Compare(right) != 0; }
int operator<(CGVString const& left, CGVString const& right) { return left.Compare(right) < 0; }
int operator>(CGVString const& left, CGVString const& right) { return left.Compare(right) > 0; }
int operator<=(CGVString const& left, CGVString const& right) { return left.Compare(right) <= 0; }
int operator>=(CGVString const& left, CGVString const& right) { return left.Compare(right) >= 0; }
int operator==(CGVString const& left, char const* right) { return left.Compare(right) == 0; }
int operator!=(CGVString const& left, char const* right) { return left.Compare(right) != 0; }
int operator<(CGVString const& left, char const* right) { return left.Compare(right) < 0; }
int operator>(CGVString const& left, char const* right) { return left.Compare(right) > 0; }
int operator<=(CGVString const& left, char const* right) { return left.Compare(right) <= 0; }
int operator>=(CGVString const& left, char const* right) { return left.Compare(right) >= 0; }
int operator==(char const* left, CGVString const& right) { return right.Compare(left) == 0; }
int operator!=(char const* left, CGVString const& right) { return right.Compare(left) != 0; }
int operator<(char const* left, CGVString const& right) { return right.Compare(left) > 0; }
int operator>(char const* left, CGVString const& right) { return right.Compare(left) < 0; }
int operator<=(char const* left, CGVString const& right) { return right.Compare(left) >= 0; }
int operator>=(char const* left, CGVString const& right) { return right.Compare(left) <= 0; }

namespace {

using Platform = CStringT<char>;

CGVString Joined(Platform const& joined) { return CGVString(joined.GetString()); }

}  // namespace

CGVString operator+(CGVString const& left, CGVString const& right) {
    return Joined(static_cast<Platform const&>(left) + static_cast<Platform const&>(right));
}

CGVString operator+(CGVString const& left, char right) { return Joined(static_cast<Platform const&>(left) + right); }

CGVString operator+(char left, CGVString const& right) { return Joined(left + static_cast<Platform const&>(right)); }

CGVString operator+(CGVString const& left, char const* right) {
    return Joined(static_cast<Platform const&>(left) + right);
}

CGVString operator+(char const* left, CGVString const& right) {
    return Joined(left + static_cast<Platform const&>(right));
}
