// Any table and any task: an edit takes or leaves one whole line, and all others stay byte for byte. The first bytes
// are the task, the rest is the table.
#include "../Require.hpp"

#include "CrontabTable.hpp"

#include <algorithm>
#include <cstring>

namespace {

using namespace zpo;

void edit(const std::string& text, const CrontabTask& task) {
    CrontabTable table(text);
    const auto before = table.list(task.path);
    const bool had = std::count(before.begin(), before.end(), task) != 0;
    table.add(task);
    auto expected = before;
    expected.push_back(task);
    require(table.list(task.path) == expected, "an added task is the last one");
    require(table.text().size() > text.size(), "a task is added and nothing else");
    require(table.remove(task), "an added task can be removed");
    require(had || table.text() == text, "adding and removing leaves the table as it was");
    require(table.list(task.path).size() == before.size(), "one task is removed");
}

/// The start of the input as a record of the C interface, and the table after it.
template <class Record>
std::string split(std::string_view input, Record& record) {
    const std::size_t length = std::min(input.size(), sizeof record);
    std::memcpy(&record, input.data(), length);
    return std::string(input.substr(length));
}

void add(std::string_view input) {
    ZpoScheduledTask record{};
    CrontabTask task;
    const std::string text = split(input, record);
    if (taskFrom(record, task) == ZPO_OK) {
        edit(text, task);
    }
}

void remove(std::string_view input) {
    ZpoScheduledTaskRecord record{};
    CrontabTask task;
    CrontabTable table(split(input, record));
    if (taskFrom(record, task) == ZPO_OK) {
        const auto before = table.list(task.path);
        const bool had = std::count(before.begin(), before.end(), task) != 0;
        require(table.remove(task) == had, "a task is removed exactly when it is listed");
    }
}

/// A table's own tasks are found in it and can be removed.
void editOwn(const std::string& text) {
    CrontabTable table(text);
    for (const char* path : {"/a", "/qv/bin/CDRTransfer", "/it's"}) {
        for (const CrontabTask& task : table.list(path)) {
            edit(text, task);
            require(table.remove(task), "a listed task can be removed");
        }
        require(table.list(path).empty(), "no task is left");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = textOf(data, size);
    add(input);
    remove(input);
    editOwn(std::string(input));
    return 0;
}
