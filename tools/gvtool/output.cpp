// Checked output: temporary file beside the target, renamed when complete.
#include "gvtool/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "gvtool/encoding.h"

namespace gvtool {
namespace {

constexpr size_t kChunk = 1 << 16;

std::string DirectoryOf(std::string const& path) {
    size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The mode a new file would get, so a replaced file is not left at mkstemp's 0600.
mode_t NewFileMode() {
    mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

Output::Output(std::string path) : path_(std::move(path)) {
    buffer_.reserve(kChunk);
    if (path_ == "-")
        fd_ = STDOUT_FILENO;
    else
        Open();
}

void Output::Open() {
    struct stat st {};
    bool exists = ::stat(path_.c_str(), &st) == 0;
    if (exists && S_ISDIR(st.st_mode))
        Fail("cannot write", EISDIR);
    if (exists && !S_ISREG(st.st_mode)) {
        // A device or a pipe cannot be replaced by renaming: write to it directly.
        fd_ = ::open(path_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
        if (fd_ < 0)
            Fail("cannot open", errno);
        return;
    }
    std::string name = path_.substr(path_.rfind('/') + 1);
    std::string pattern = DirectoryOf(path_) + "/." + name + ".XXXXXX";
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    fd_ = ::mkstemp(buf.data());
    if (fd_ < 0)
        Fail("cannot create a file beside", errno);
    temp_ = buf.data();
    ::fchmod(fd_, exists ? (st.st_mode & 07777) : NewFileMode());
}

Output::~Output() {
    if (done_ || fd_ < 0)
        return;
    if (fd_ != STDOUT_FILENO)
        ::close(fd_);
    if (!temp_.empty())
        ::unlink(temp_.c_str());
}

void Output::Write(std::string_view bytes) {
    buffer_.append(bytes);
    if (buffer_.size() >= kChunk)
        Flush();
}

void Output::Flush() {
    size_t at = 0;
    while (at < buffer_.size()) {
        ssize_t n = ::write(fd_, buffer_.data() + at, buffer_.size() - at);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            Fail("cannot write", n < 0 ? errno : EIO);
        at += static_cast<size_t>(n);
    }
    buffer_.clear();
}

void Output::Commit() {
    if (done_)
        return;
    Flush();
    if (!temp_.empty() && ::fsync(fd_) != 0)
        Fail("cannot write", errno);
    int fd = fd_;
    fd_ = -1;
    // Closing standard output too reports what a network file system held back.
    if (::close(fd) != 0 && errno != EINTR)
        Fail("cannot write", errno);
    if (!temp_.empty() && ::rename(temp_.c_str(), path_.c_str()) != 0)
        Fail("cannot replace", errno);
    done_ = true;
}

void Output::Fail(std::string const& doing, int error) {
    if (!temp_.empty())
        ::unlink(temp_.c_str());
    temp_.clear();
    std::string target = path_ == "-" ? "standard output" : path_;
    throw WriteFailure{doing + " " + target + ": " + std::strerror(error)};
}

Output& Stdout() {
    static Output out("-");
    return out;
}

void PrintLine(std::string_view cp1252) {
    Stdout().Write(ToUser(cp1252));
    Stdout().Write("\n");
}

}  // namespace gvtool
