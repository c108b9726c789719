#include "files/durable.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace casehost::files {

namespace {

std::error_code LastError() {
    return {errno, std::generic_category()};
}

class Descriptor {
 public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return number_ >= 0; }
    std::error_code Close() {
        const int number = number_;
        number_ = -1;
        return number < 0 || close(number) == 0 ? std::error_code() : LastError();
    }
    std::error_code Write(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t written = write(number_, text.data(), text.size());
            if (written < 0 && errno != EINTR) return LastError();
            if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
        }
        return {};
    }
    void TakePermissionsOf(const std::filesystem::path& like) const {
        struct stat found {};
        if (stat(like.c_str(), &found) == 0) fchmod(number_, found.st_mode & 0777);
    }
    std::error_code Sync() const { return fsync(number_) == 0 ? std::error_code() : LastError(); }

 private:
    int number_;
};

}  // namespace

std::error_code WriteThrough(const std::filesystem::path& path, std::string_view text,
                             const std::filesystem::path& like) {
    constexpr int kHow = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    Descriptor file(open(path.c_str(), kHow, 0666));
    if (!file.IsOpen()) return LastError();
    file.TakePermissionsOf(like);
    std::error_code error = file.Write(text);
    if (!error) error = file.Sync();
    // Some file systems tell only here that the disk is full.
    const std::error_code at_close = file.Close();
    if (!error) error = at_close;
    if (error) unlink(path.c_str());
    return error;
}

std::error_code Replace(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return LastError();
    // The new name is in the folder. Not every file system can be told to write a folder down; the
    // file is whole under one of its names all the same.
    const std::filesystem::path folder = to.has_parent_path() ? to.parent_path() : ".";
    const Descriptor names(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (names.IsOpen()) names.Sync();
    return {};
}

}  // namespace casehost::files
