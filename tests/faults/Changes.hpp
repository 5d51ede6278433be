// What the fault tests do to a device again and again. Each change leads to one of two states, 0 and 1.
#pragma once

#include "Home.hpp"

struct Change {
    const char* name;
    std::function<void(int state)> prepare; ///< before the change, undisturbed
    std::function<int(int state)> make;     ///< the change, in a child process; returns 0 when it is acknowledged
    std::function<int()> look;              ///< the state found; -1 when anything is missing or half
};

inline std::ostream& operator<<(std::ostream& out, const Change& change) {
    return out << change.name;
}

/// Registry write, backup, restore, crontab edit, password change.
std::vector<Change> allChanges();
