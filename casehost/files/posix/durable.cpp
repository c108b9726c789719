// SPDX-License-Identifier: Apache-2.0
#include "files/durable.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <optional>
#include <vector>

namespace fixtop::casehost::files {

namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 20;
constexpr char kAccessList[] = "system.posix_acl_access";

std::error_code LastError() {
    return {errno, std::generic_category()};
}

class Descriptor {
 public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }
    std::error_code Close() {
        const int number = number_;
        number_ = -1;
        return number < 0 || close(number) == 0 ? std::error_code() : LastError();
    }

 private:
    int number_;
};

// Holds the signals back that would end the process; none that is ignored, for that never would.
class SignalsWait {
 public:
    SignalsWait() {
        sigemptyset(&held_);
        for (const int signal : kEnding) {
            struct sigaction action {};
            sigaction(signal, nullptr, &action);
            if (action.sa_handler != SIG_IGN) sigaddset(&held_, signal);
        }
        pthread_sigmask(SIG_BLOCK, &held_, &former_);
    }
    ~SignalsWait() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;

    bool OneWaits() const {
        sigset_t waiting;
        sigpending(&waiting);
        return std::ranges::any_of(kEnding, [&](int signal) {
            return sigismember(&held_, signal) == 1 && sigismember(&former_, signal) == 0 &&
                   sigismember(&waiting, signal) == 1;
        });
    }

 private:
    static constexpr int kEnding[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

    sigset_t held_;
    sigset_t former_;
};

// Rights of single users that the file has beside its mode, or that its folder gave it.
void TakeAccessList(int file, const char* like) {
    std::vector<char> list(1 << 16);
    const ssize_t size = getxattr(like, kAccessList, list.data(), list.size());
    if (size > 0) {
        fsetxattr(file, kAccessList, list.data(), static_cast<std::size_t>(size), 0);
    } else {
        fremovexattr(file, kAccessList);
    }
}

// What only the group may do is left out when the group is another.
void TakeRights(int file, const char* like) {
    struct stat found {};
    if (stat(like, &found) != 0) return;
    mode_t mode = found.st_mode & 0777;
    const bool all = fchown(file, found.st_uid, found.st_gid) == 0;
    if (!all && fchown(file, static_cast<uid_t>(-1), found.st_gid) != 0) {
        mode &= 0707 | (mode & 07) << 3;
    }
    TakeAccessList(file, like);
    fchmod(file, mode);
}

bool IsInUse(int file) {
    return flock(file, LOCK_EX | LOCK_NB) != 0;
}

}  // namespace

struct NewFile::State {
    explicit State(std::filesystem::path its_target) : target(std::move(its_target)) {}

    // Its lock says that it is in use, for as long as it is open.
    std::error_code Lock() const {
        // Whoever tidies up may have been faster.
        if (IsInUse(file->Number()) && errno == EWOULDBLOCK) return Taken();
        struct stat found {};
        return fstat(file->Number(), &found) == 0 && found.st_nlink > 0 ? std::error_code()
                                                                        : Taken();
    }
    static std::error_code Taken() { return std::make_error_code(std::errc::file_exists); }
    std::error_code Interruption() const {
        return signals.OneWaits() ? std::make_error_code(std::errc::interrupted)
                                  : std::error_code();
    }
    // Some file systems tell only when a file is closed that the disk is full.
    std::error_code CloseOnce() const {
        Descriptor copy(dup(file->Number()));
        return copy.Close();
    }

    SignalsWait signals;
    std::filesystem::path target;
    std::filesystem::path name;  // empty once the file has the target's
    std::optional<Descriptor> file;
};

NewFile::NewFile(std::filesystem::path target)
    : state_(std::make_unique<State>(std::move(target))) {}

NewFile::~NewFile() {
    if (!state_->name.empty()) unlink(state_->name.c_str());
}

std::error_code NewFile::Open(const std::filesystem::path& name) {
    constexpr int kHow = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    struct stat like {};
    const bool replaces = stat(state_->target.c_str(), &like) == 0;
    const mode_t mode = replaces ? like.st_mode & 0600 : 0666;
    // Once there is a file, no memory is needed to keep its name.
    std::filesystem::path made = name;
    state_->file.emplace(open(name.c_str(), kHow, mode));
    if (!state_->file->IsOpen()) return LastError();
    if (const std::error_code error = state_->Lock()) return error;
    state_->name = std::move(made);
    return {};
}

std::error_code NewFile::Append(std::string_view text) {
    while (!text.empty()) {
        if (const std::error_code error = state_->Interruption()) return error;
        const std::size_t wanted = std::min(text.size(), kMostAtOnce);
        const ssize_t written = write(state_->file->Number(), text.data(), wanted);
        if (written < 0 && errno != EINTR) return LastError();
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

std::error_code NewFile::Sync() {
    if (fsync(state_->file->Number()) != 0) return LastError();
    if (const std::error_code error = state_->CloseOnce()) return error;
    return state_->Interruption();
}

std::error_code NewFile::TakePlace() {
    const std::filesystem::path& target = state_->target;
    TakeRights(state_->file->Number(), target.c_str());
    if (std::rename(state_->name.c_str(), target.c_str()) != 0) return LastError();
    state_->name.clear();
    // The new name is in the folder. Not every file system can be told to write a folder down; the
    // file is whole under one of its names all the same.
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    const Descriptor names(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (names.IsOpen()) fsync(names.Number());
    return {};
}

void RemoveUnused(const std::filesystem::path& name) {
    struct stat named {};
    if (lstat(name.c_str(), &named) != 0 || !S_ISREG(named.st_mode)) return;
    constexpr int kHow = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const Descriptor file(open(name.c_str(), O_WRONLY | kHow));
    struct stat opened {};
    if (!file.IsOpen() || IsInUse(file.Number()) || fstat(file.Number(), &opened) != 0) return;
    // The name may have gone to another file while this one was opened.
    if (lstat(name.c_str(), &named) != 0) return;
    if (named.st_dev == opened.st_dev && named.st_ino == opened.st_ino) unlink(name.c_str());
}

bool IsDevice(const std::filesystem::path& name) {
    struct stat found {};
    return stat(name.c_str(), &found) == 0 && !S_ISREG(found.st_mode) && !S_ISDIR(found.st_mode);
}

}  // namespace fixtop::casehost::files
