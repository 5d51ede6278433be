// What the tests of all folders stand on: the test framework, temporary folders, files and processes.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace support {

/// A directory of its own under the temporary directory, removed at the end.
class TempDir {
  public:
    TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    ~TempDir();

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
    pid_t owner_;
};

struct Result {
    int exitCode = -1;  ///< minus the signal when it was killed
    std::string output; ///< standard output and standard error
};

/// Runs a program to its end, with the test's environment.
Result run(const std::vector<std::string>& command);

/// Becomes the program, with its outputs in the file when one is named; returns only when that fails.
int become(const std::vector<std::string>& command, const std::string& output = "");

/// Runs `work` in a forked child and returns its exit code, or minus the signal that ended it; `work` returns the code.
int inChild(const std::function<int()>& work);

/// What `work` returns when the system does not give it a right that it needs.
constexpr int kNoRight = 77;
/// Expects 0 of `work` in a forked child; skips the test, which ends with this call, when it returns kNoRight.
void expectInChild(const std::function<int()>& work, const std::string& right);

pid_t startChild(const std::function<int()>& work);
int waitForChild(pid_t child);

/// Looks every few milliseconds whether `condition` holds, for at most `patience`.
bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds patience = std::chrono::seconds(5));

/// Waits until the process has opened files whose paths end in `name` so many times.
bool isOpen(pid_t process, const std::string& name, int times);

/// How often the part stands in the text.
std::size_t countOf(const std::string& part, const std::string& text);

/// Of the user that the tests run as.
std::string userName();

std::string contentOf(const std::string& path);
void writeFile(const std::string& path, const std::string& content);

/// The text is what the file of the source tree holds. With UPDATE_GOLDEN set the file is written instead, for a look
/// at the difference.
void expectGolden(const std::string& file, const std::string& text);

/// A golden file of commands and all that they print: "$ COMMAND" of the shell and the lines below it.
void expectTranscript(const std::string& file);

} // namespace support
