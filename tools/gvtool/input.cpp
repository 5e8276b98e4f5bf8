// Input from files and standard input, with offsets for damage reports.
#include "gvtool/input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "gvtool/commands.h"

namespace gvtool {
namespace {

constexpr size_t kChunk = 1 << 16;

std::string NameOf(std::string const& path) { return path == "-" ? "standard input" : path; }

int OpenFd(std::string const& path) {
    if (path == "-")
        return STDIN_FILENO;
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        throw Failure{"cannot read " + path + ": " + std::strerror(errno)};
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        ::close(fd);
        throw Failure{"cannot read " + path + ": " + std::strerror(EISDIR)};
    }
    return fd;
}

}  // namespace

InputBuffer::InputBuffer(int fd) : fd_(fd), block_(kChunk + 1) { setg(block_.data(), block_.data(), block_.data()); }

InputBuffer::~InputBuffer() {
    if (fd_ != STDIN_FILENO)
        ::close(fd_);
}

InputBuffer::int_type InputBuffer::underflow() {
    if (gptr() < egptr())
        return traits_type::to_int_type(*gptr());
    // Keep the last byte in front so that one character can still be put back.
    size_t keep = egptr() > eback() ? 1 : 0;
    start_ += static_cast<uint64_t>(egptr() - eback()) - keep;
    if (keep)
        block_[0] = egptr()[-1];
    ssize_t n;
    do {
        n = ::read(fd_, block_.data() + keep, kChunk);
    } while (n < 0 && errno == EINTR);
    if (n < 0) {
        error_ = errno;
        n = 0;
    }
    setg(block_.data(), block_.data() + keep, block_.data() + keep + n);
    return n == 0 ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

InputBuffer::pos_type InputBuffer::seekoff(off_type off, std::ios_base::seekdir dir, std::ios_base::openmode) {
    // Only the question "where am I" is answered: the input may be a pipe.
    if (off != 0 || dir != std::ios_base::cur)
        return pos_type(off_type(-1));
    return pos_type(static_cast<off_type>(start_ + static_cast<uint64_t>(gptr() - eback())));
}

Input OpenInput(std::string const& path) {
    Input input;
    input.name = NameOf(path);
    input.buffer = std::make_unique<InputBuffer>(OpenFd(path));
    input.stream = std::make_unique<std::istream>(input.buffer.get());
    if (input.stream->peek() == std::char_traits<char>::eof())
        throw Failure{input.name + ": is empty"};
    return input;
}

std::string ReadInput(std::string const& path, bool allowEmpty) {
    InputBuffer buffer(OpenFd(path));
    std::string bytes;
    for (char block[kChunk];;) {
        std::streamsize n = buffer.sgetn(block, sizeof block);
        if (n <= 0)
            break;

        bytes.append(block, static_cast<size_t>(n));
    }
    if (buffer.Error() != 0)
        throw Failure{"cannot read " + NameOf(path) + ": " + std::strerror(buffer.Error())};
    if (bytes.empty() && !allowEmpty)
        throw Failure{NameOf(path) + ": is empty"};
    return bytes;
}

}  // namespace gvtool

