#include "Support.hpp"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <pwd.h>
#include <sys/wait.h>

namespace support {

TempDir::TempDir() : path_((std::filesystem::temp_directory_path() / "cdr-test-XXXXXX").string()), owner_(getpid()) {
    if (mkdtemp(path_.data()) == nullptr) {
        std::abort();
    }
}

TempDir::~TempDir() {
    if (getpid() != owner_) {
        return; // a forked child ends
    }
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

pid_t startChild(const std::function<int()>& work) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        _exit(work());
    }
    return child;
}

int waitForChild(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

int inChild(const std::function<int()>& work) {
    return waitForChild(startChild(work));
}

void expectInChild(const std::function<int()>& work, const std::string& right) {
    const int code = inChild(work);
    if (code == kNoRight) {
        GTEST_SKIP() << "needs the right to " << right;
    }
    EXPECT_EQ(0, code);
}

int become(const std::vector<std::string>& command, const std::string& output) {
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    if (!output.empty() && (std::freopen(output.c_str(), "w", stdout) == nullptr || dup2(1, 2) < 0)) {
        return 126;
    }
    execvp(arguments[0], arguments.data());
    return 127;
}

Result run(const std::vector<std::string>& command) {
    const TempDir scratch;
    const std::string output = scratch / "output";
    Result result;
    result.exitCode = inChild([&] { return become(command, output); });
    result.output = contentOf(output);
    return result;
}

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

bool isOpen(pid_t process, const std::string& name, int times) {
    const std::string count = "ls -l /proc/" + std::to_string(process) + "/fd | grep -c " + name + "$";
    return waitUntil([&] { return run({"sh", "-c", count}).output == std::to_string(times) + "\n"; });
}

std::size_t countOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

std::string userName() {
    return getpwuid(geteuid())->pw_name;
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

void expectGolden(const std::string& file, const std::string& text) {
    if (getenv("UPDATE_GOLDEN") != nullptr) {
        writeFile(file, text);
    }
    EXPECT_EQ(contentOf(file), text) << file;
}

void expectTranscript(const std::string& file) {
    const std::string transcript = contentOf(file);
    std::string replayed;
    for (std::size_t at = 0, next = 0; at < transcript.size(); at = next) {
        next = std::min(transcript.find("\n$ ", at), transcript.size() - 1) + 1;
        const std::string command = transcript.substr(at + 2, transcript.find('\n', at) - at - 2);
        replayed += "$ " + command + "\n" + run({"/bin/sh", "-c", command}).output;
    }
    expectGolden(file, replayed);
}

} // namespace support
