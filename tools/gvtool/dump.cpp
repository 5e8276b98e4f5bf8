// gvtool dump: a saved object (or several) as readable text or JSON.
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <iostream>
#include <memory>
#include <sstream>

#include "gvtool/archive_io.h"
#include "gvtool/commands.h"
#include "gvtool/describe.h"
#include "gvtool/input.h"
#include "gvtool/output.h"
#include "gvtool/text_io.h"

namespace gvtool {
namespace {

// Objects as text lines or as the elements of one JSON array. The array is
// closed even when damage ends the run, so what was printed stays valid JSON.
class Printer {
public:
    Printer(bool json, std::ostream& out) : json_(json), out_(out) {
        if (json_)
            out_ << '[';
    }
    void Print(CGVObject& obj) {
        if (json_)
            out_ << (count_++ ? ",\n " : "");
        DescribeTo(out_, obj, json_);
        if (!json_)
            out_ << '\n';
    }
    void Close() {
        if (json_)
            out_ << "]\n";
    }

private:
    bool json_;
    std::ostream& out_;
    size_t count_ = 0;
};

// A line on a terminal's stderr while a long dump runs, so it is not taken for a hang.
class Progress {
public:
    bool Wanted() const { return tty_; }
    void Tick(size_t done) {
        if (std::chrono::steady_clock::now() - start_ < std::chrono::seconds(1))
            return;
        std::cerr << "\rgvtool: " << done << " read" << std::flush;
        shown_ = true;
    }
    ~Progress() {
        if (shown_)
            std::cerr << "\r\033[K" << std::flush;
    }

private:
    bool tty_ = ::isatty(STDERR_FILENO) == 1;
    bool shown_ = false;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

void DumpArchive(std::istream& in, std::string const& archiveClass, Printer& printer) {
    std::string bytes(std::istreambuf_iterator<char>(in), {});
    std::unique_ptr<CGVObject> obj(NewOfClass(archiveClass));
    size_t used = 0;
    try {
        used = LoadArchive(bytes, *obj);
    } catch (Failure const& f) {
        std::string part = DamagedPart(bytes, archiveClass);
        throw Failure{f.message + (part.empty() ? "" : "; " + part)};
    }
    printer.Print(*obj);
    if (used < bytes.size())
        throw Failure{"byte offset " + std::to_string(used) + ": " + std::to_string(bytes.size() - used) +
                      " bytes after the " + archiveClass + " were not read; the file holds something else"};
}

}  // namespace

void Dump(std::istream& in, std::string const& archiveClass, bool json, std::ostream& out) {
    Printer printer(json, out);
    try {
        if (!archiveClass.empty()) {
            DumpArchive(in, archiveClass, printer);
        } else {
            TextReader reader(in);
            Progress progress;
            if (progress.Wanted())
                reader.OnProgress([&progress](size_t done) { progress.Tick(done); });
            while (auto obj = reader.Next())
                printer.Print(*obj);
        }
    } catch (Failure const&) {
        printer.Close();
        throw;
    }
    printer.Close();
}

void Dump(std::string const& bytes, std::string const& archiveClass, bool json, std::ostream& out,
          std::ostream&) {
    std::istringstream in(bytes);
    Dump(in, archiveClass, json, out);
}

void AddDump(CLI::App& app) {
    auto* cmd = app.add_subcommand("dump", "Decode saved objects into readable text or JSON");
    static std::string file, archiveClass;
    static bool json = false;
    cmd->add_option("FILE", file,
                    "A text-stream file of one or more objects (tags T U V W X Y), or with --archive the binary "
                    "archive of one object; - reads standard input")
        ->required();
    cmd->add_option("--archive", archiveClass, "Read FILE as the binary archive of one object of this class")
        ->check(CLI::IsMember({"string", "long", "buffer", "long-array", "string-array", "array"}));
    cmd->add_flag("--json", json, "Print a JSON array of {\"class\", \"value\"} objects");
    cmd->callback([] {
        gvplatform::SetStrictLoading(true);
        Input input = OpenInput(file);
        OutputStream out(Stdout());
        try {
            Dump(*input.stream, archiveClass, json, out);
        } catch (Failure const& f) {
            if (input.buffer->Error() == 0)
                throw Failure{input.name + ": " + f.message};
        }
        if (input.buffer->Error() != 0)
            throw Failure{"cannot read " + input.name + ": " + std::strerror(input.buffer->Error())};
    });
}

}  // namespace gvtool
