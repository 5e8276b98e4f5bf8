// Reads names (one per line, Windows-1252) and saves them as a string array in
// both persisted forms: the text stream (NAME.txt) and the binary archive (NAME.bin).
// Usage: save_names LIST NAME
#include <gvlib/gvlib.h>

#include <cstdio>
#include <fstream>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s LIST NAME\n", argv[0]);
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "%s: cannot read %s\n", argv[0], argv[1]);
        return 1;
    }
    CGVStringArray names;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        CGVString name(line.c_str());
        names.mAdd(&name);
    }
    std::string base = argv[2];
    std::ofstream text(base + ".txt", std::ios::binary);
    text << names;  // tag X, the count, then each name as a T object
    try {
        CFile file((base + ".bin").c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive ar(&file, CArchive::store);
        names.Serialize(ar);
        ar.Close();
    } catch (CException const& e) {
        std::fprintf(stderr, "%s: %s\n", argv[0], e.what());
        return 1;
    }
    std::printf("saved %d names to %s.txt and %s.bin\n", names.mGetNumItems(), base.c_str(), base.c_str());
    return 0;
}
