// The host application's string table, filled by the host through gvplatform.
#include "platform/string_table.h"

#include <mutex>
#include <unordered_map>

#include "gvlib/platform/gvplatform.h"

namespace {

struct StringTable {
    std::mutex lock;
    std::unordered_map<uint32_t, std::string> entries;
};

StringTable& Table() {
    static StringTable* table = new StringTable;  // never destroyed: usable during static teardown
    return *table;
}

}  // namespace

namespace gvplatform {

void SetStringResource(uint32_t id, char const* text) {
    StringTable& table = Table();
    std::lock_guard<std::mutex> guard(table.lock);
    if (text == nullptr)
        table.entries.erase(id);
    else
        table.entries[id] = text;
}

void ClearStringResources() {
    StringTable& table = Table();
    std::lock_guard<std::mutex> guard(table.lock);
    table.entries.clear();
}

namespace detail {

bool LookUpStringResource(uint32_t id, std::string& text) {
    StringTable& table = Table();
    std::lock_guard<std::mutex> guard(table.lock);
    auto it = table.entries.find(id);
    // A Windows string table cannot hold an empty entry: loading one fails.
    if (it == table.entries.end() || it->second.empty())
        return false;
    text = it->second;
    return true;
}

}  // namespace detail
}  // namespace gvplatform
