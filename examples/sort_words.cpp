// Sorts the lines of a text file (Windows-1252) in a locale's word-sort order,
// the order CGVString::mCompare gives, and prints them.
// Usage: sort_words FILE [LCID]
#include <gvlib/gvlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FILE [LCID]\n", argv[0]);
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "%s: cannot read %s\n", argv[0], argv[1]);
        return 1;
    }
    if (argc > 2)
        GVSetSortLCID(static_cast<uint32_t>(std::strtoul(argv[2], nullptr, 10)));
    std::vector<CGVString> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.emplace_back(line.c_str());
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](CGVString const& a, CGVString const& b) { return a.mCompare(&b) < 0; });
    for (CGVString const& line : lines)
        std::printf("%s\n", line.GetString());
    return 0;
}
