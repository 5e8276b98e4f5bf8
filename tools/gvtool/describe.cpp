// Readable descriptions of value objects.
#include "gvtool/describe.h"

#include "gvtool/encoding.h"

#include <cstdio>
#include <sstream>

namespace gvtool {
namespace {

// Text quoted for a terminal (in the user's encoding) or for JSON (code points).
std::string Quoted(const char* text, int length, bool json) {
    std::string_view view(text, static_cast<size_t>(length));
    return json ? JsonQuoted(view) : TextQuoted(view);
}

std::string Hex(const char* bytes, int32_t length) {
    std::string out;
    char buf[4];
    for (int32_t i = 0; i < length; ++i) {
        std::snprintf(buf, sizeof buf, i ? " %02x" : "%02x", static_cast<unsigned char>(bytes[i]));
        out += buf;
    }
    return out;
}

std::string DateText(CGVDate& d) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%04u-%02u-%02u %02u:%02u:%02u", d.mGetYear(), d.mGetMonth(), d.mGetDay(),
                  d.mGetHour(), d.mGetMinute(), d.mGetSecond());
    return buf;
}

std::string StringItem(CGVStringArray& a, int32_t i, bool json) {
    CGVString item;
    a.mGetArrayItem(&item, i);
    return Quoted(item.GetString(), item.GetLength(), json);
}

}  // namespace

std::string ClassOf(CGVObject& obj) {
    if (dynamic_cast<CGVStringArray*>(&obj))
        return "string-array";
    if (dynamic_cast<CGVLongArray*>(&obj))
        return "long-array";
    if (dynamic_cast<CGVArray*>(&obj))
        return "array";
    if (dynamic_cast<CGVString*>(&obj))
        return "string";
    if (dynamic_cast<CGVLong*>(&obj))
        return "long";
    if (dynamic_cast<CGVBuffer*>(&obj))
        return "buffer";
    if (dynamic_cast<CGVDate*>(&obj))
        return "date";
    return "object";
}

CGVObject* NewOfClass(std::string const& name) {
    if (name == "string")
        return new CGVString;
    if (name == "long")
        return new CGVLong(0);
    if (name == "buffer")
        return new CGVBuffer(0, 128);
    if (name == "date")
        return new CGVDate;
    if (name == "long-array")
        return new CGVLongArray;
    if (name == "string-array")
        return new CGVStringArray;
    if (name == "array")
        return new CGVArray;
    return nullptr;
}

std::string Describe(CGVObject& obj) {
    std::ostringstream out;
    DescribeTo(out, obj, false);
    return out.str();
}

std::string DescribeJson(CGVObject& obj) {
    std::ostringstream out;
    DescribeTo(out, obj, true);
    return out.str();
}

void DescribeTo(std::ostream& out, CGVObject& obj, bool json) {
    if (json)
        DescribeJsonTo(out, obj);
    else
        DescribeTextTo(out, obj);
}

void DescribeTextTo(std::ostream& out, CGVObject& obj) {
    std::string cls = ClassOf(obj);
    out << cls;
    if (auto* a = dynamic_cast<CGVStringArray*>(&obj)) {
        out << ", " << a->mGetNumItems() << " items";
        for (int32_t i = 0; i < a->mGetNumItems(); ++i)
            out << "\n  [" << i << "] " << StringItem(*a, i, false);
    } else if (auto* l = dynamic_cast<CGVLongArray*>(&obj)) {
        out << ", " << l->mGetNumItems() << " items:";
        for (int32_t i = 0; i < l->mGetNumItems(); ++i)
            out << ' ' << (*static_cast<CGVLongArray const*>(l))[i];
    } else if (auto* g = dynamic_cast<CGVArray*>(&obj)) {
        out << ", element size " << g->mGetElementSize() << ", " << g->mGetNumItems() << " items";
    } else if (auto* s = dynamic_cast<CGVString*>(&obj)) {
        out << ' ' << Quoted(s->GetString(), s->GetLength(), false);
    } else if (auto* n = dynamic_cast<CGVLong*>(&obj)) {
        out << ' ' << n->mGetValue();
    } else if (auto* b = dynamic_cast<CGVBuffer*>(&obj)) {
        out << ", " << b->mGetLength() << " bytes";
        if (b->mGetLength() > 0)
            out << ": " << Hex(b->mGetBuffer(), b->mGetLength());
    } else if (auto* d = dynamic_cast<CGVDate*>(&obj)) {
        out << ' ' << DateText(*d);
    }
}

void DescribeJsonTo(std::ostream& out, CGVObject& obj) {
    out << "{\"class\": \"" << ClassOf(obj) << "\", \"value\": ";
    if (auto* a = dynamic_cast<CGVStringArray*>(&obj)) {
        out << '[';
        for (int32_t i = 0; i < a->mGetNumItems(); ++i)
            out << (i ? ", " : "") << StringItem(*a, i, true);
        out << ']';
    } else if (auto* l = dynamic_cast<CGVLongArray*>(&obj)) {
        out << '[';
        for (int32_t i = 0; i < l->mGetNumItems(); ++i)
            out << (i ? ", " : "") << (*static_cast<CGVLongArray const*>(l))[i];
        out << ']';
    } else if (auto* g = dynamic_cast<CGVArray*>(&obj)) {
        out << "{\"elementSize\": " << g->mGetElementSize() << ", \"items\": " << g->mGetNumItems() << '}';
    } else if (auto* s = dynamic_cast<CGVString*>(&obj)) {
        out << Quoted(s->GetString(), s->GetLength(), true);
    } else if (auto* n = dynamic_cast<CGVLong*>(&obj)) {
        out << n->mGetValue();
    } else if (auto* b = dynamic_cast<CGVBuffer*>(&obj)) {
        out << '"' << Hex(b->mGetBuffer(), b->mGetLength()) << '"';
    } else if (auto* d = dynamic_cast<CGVDate*>(&obj)) {
        out << '"' << DateText(*d) << '"';
    } else {
        out << "null";
    }
    out << '}';
}

}  // namespace gvtool
