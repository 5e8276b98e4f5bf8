// Answers as text lines or JSON.
#include "gvtool/answer.h"

#include <iostream>

#include "gvtool/commands.h"
#include "gvtool/encoding.h"
#include "gvtool/output.h"

namespace gvtool {

bool& JsonOutput() {
    static bool json = false;
    return json;
}

void PrintText(CGVString const& text) {
    std::string_view value(text.GetString(), static_cast<size_t>(text.GetLength()));
    if (JsonOutput())
        Stdout().Write(JsonQuoted(value) + "\n");
    else
        PrintLine(value);
}

void PrintNumber(int64_t value) { Stdout().Write(std::to_string(value) + "\n"); }

void Answer(int yes) {
    Stdout().Write(JsonOutput() ? (yes ? "true\n" : "false\n") : (yes ? "yes\n" : "no\n"));
    Result() = yes ? kOk : kFalse;
}

void PrintFields(std::vector<std::pair<std::string, std::string>> const& fields) {
    if (!JsonOutput()) {
        for (auto const& [name, value] : fields)
            PrintLine(name + ": " + value);
        return;
    }
    std::string out = "{";
    for (size_t i = 0; i < fields.size(); ++i)
        out += (i ? ", " : "") + JsonQuoted(fields[i].first) + ": " + JsonQuoted(fields[i].second);
    Stdout().Write(out + "}\n");
}

void PrintList(std::vector<std::string> const& items) {
    if (!JsonOutput()) {
        for (auto const& item : items)
            PrintLine(item);
        return;
    }
    std::string out = "[";
    for (size_t i = 0; i < items.size(); ++i)
        out += (i ? ", " : "") + JsonQuoted(items[i]);
    Stdout().Write(out + "]\n");
}

void Doubtful(std::string const& why) {
    std::cerr << "gvtool: warning: " << why << '\n';
    Result() = kFalse;
}

}  // namespace gvtool
