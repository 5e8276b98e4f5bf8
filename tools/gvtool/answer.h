// How a command prints its answer: a line of text in the user's encoding, or
// JSON with --json.
#pragma once

#include <gvlib/gvlib.h>

#include <string>
#include <utility>
#include <vector>

namespace gvtool {

/// Set by --json on a command.
bool& JsonOutput();

/// A text answer: the line, or a JSON string.
void PrintText(CGVString const& text);
/// A number: the same in text and JSON.
void PrintNumber(int64_t value);
/// A test's answer: yes/no or true/false; the exit status 1 when it is false.
void Answer(int yes);
/// Named texts: "name: value" lines, or one JSON object.
void PrintFields(std::vector<std::pair<std::string, std::string>> const& fields);
/// A list of texts: a line each, or a JSON array.
void PrintList(std::vector<std::string> const& items);
/// Tells the user that the library's answer, printed as it is, means nothing
/// for this input: a warning on stderr and the exit status 1.
void Doubtful(std::string const& why);

}  // namespace gvtool
