// The one writer every output goes through: each write, the flush and the
// close are checked, and a file is replaced only once it is complete.
#pragma once

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace gvtool {

/// Raised when output cannot be written; main prints it and exits with 1.
struct WriteFailure {
    std::string message;
};

/// Output to a file, or to standard output for "-". A regular file (or a new
/// one) is written under a temporary name in the same directory and renamed
/// over the target by Commit, so a failed run leaves the target as it was;
/// other targets (devices, pipes) are written in place.
class Output {
public:
    explicit Output(std::string path);
    Output(Output const&) = delete;
    Output& operator=(Output const&) = delete;
    /// Removes the temporary file of an output that was not committed.
    ~Output();

    void Write(std::string_view bytes);
    /// Flushes, closes and renames into place; raises WriteFailure.
    void Commit();

private:
    void Open();
    void Flush();
    [[noreturn]] void Fail(std::string const& doing, int error);

    std::string path_;
    std::string temp_;
    std::string buffer_;
    int fd_ = -1;
    bool done_ = false;
};

/// A std::ostream over an Output; a failed write raises its WriteFailure.
class OutputStream : public std::ostream {
public:
    explicit OutputStream(Output& target) : std::ostream(&buffer_), buffer_(target) { exceptions(std::ios::badbit); }

private:
    class Buffer : public std::streambuf {
    public:
        explicit Buffer(Output& target) : out_(target) {}

    protected:
        int_type overflow(int_type c) override {
            if (!traits_type::eq_int_type(c, traits_type::eof())) {
                char ch = traits_type::to_char_type(c);
                out_.Write(std::string_view(&ch, 1));
            }
            return traits_type::not_eof(c);
        }
        std::streamsize xsputn(const char* s, std::streamsize n) override {
            out_.Write(std::string_view(s, static_cast<size_t>(n)));
            return n;
        }

    private:
        Output& out_;
    };
    Buffer buffer_;
};

/// Standard output; main commits it after the command ran.
Output& Stdout();
/// A line of library text on standard output, in the user's encoding.
void PrintLine(std::string_view cp1252);

}  // namespace gvtool
