// Reading the tool's input: a file, or standard input for "-".
#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <streambuf>
#include <string>
#include <vector>

namespace gvtool {

/// Reads a file descriptor in chunks and knows the offset of the next byte,
/// so a stream over it answers tellg() on pipes as well as on files.
class InputBuffer : public std::streambuf {
public:
    explicit InputBuffer(int fd);
    ~InputBuffer() override;
    /// The errno of a failed read (0 when none): the stream only sees an early end.
    int Error() const { return error_; }
    InputBuffer(InputBuffer const&) = delete;
    InputBuffer& operator=(InputBuffer const&) = delete;

protected:
    int_type underflow() override;
    pos_type seekoff(off_type off, std::ios_base::seekdir dir, std::ios_base::openmode which) override;

private:
    int fd_;
    std::vector<char> block_;
    uint64_t start_ = 0;  // offset of eback() in the input
    int error_ = 0;
};

/// An open input: the stream and the name to use in messages.
struct Input {
    std::unique_ptr<InputBuffer> buffer;
    std::unique_ptr<std::istream> stream;
    std::string name;
};

/// Opens `path` ("-" for standard input). Raises Failure with the system's
/// reason for a file that cannot be read, a directory, and an empty input.
Input OpenInput(std::string const& path);
/// The whole input; an empty one is allowed where `allowEmpty`.
std::string ReadInput(std::string const& path, bool allowEmpty);

}  // namespace gvtool
