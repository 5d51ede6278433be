// Any table, and a task for any path, which is the first line: edits take or leave whole lines of their own.
#include "../Require.hpp"

#include "CrontabTable.hpp"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(textOf(data, size));
    const std::string text = input.substr(std::min(input.find('\n') + 1, input.size()));
    zpo::CrontabTask task;
    task.path = input.substr(0, input.find('\n'));
    if (task.path.find('\0') != std::string::npos || zpo::checkPath(task.path.c_str()) != ZPO_OK) {
        return 0;
    }
    zpo::CrontabTable table(text);
    const std::vector<zpo::CrontabTask> before = table.list(task.path);
    const bool had = std::count(before.begin(), before.end(), task) != 0;
    table.add(task);
    std::vector<zpo::CrontabTask> expected = before;
    expected.push_back(task);
    require(table.list(task.path) == expected, "an added task is the last one");
    require(table.remove(task) && table.list(task.path).size() == before.size(), "a task is removed");
    require(had || table.text() == text, "adding and removing leaves the table as it was");
    for (const zpo::CrontabTask& own : table.list(task.path)) {
        require(table.remove(own), "a listed task can be removed");
    }
    require(table.list(task.path).empty(), "no task is left");
    return 0;
}
