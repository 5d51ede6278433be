#pragma once

#include "Support.hpp"
#include "ZpoShared.h"

/// The directories that the libraries work in, set before a test program's first call; removed at its end.
struct Home {
    Home() {
        setenv("ZPO_STATE_DIR", (dir / "state").c_str(), 1);
        setenv("ZPO_LOG_DIR", (dir / "log").c_str(), 1);
        setenv("ZPO_CRONTAB_DIR", (dir / "crontabs").c_str(), 1);
        setenv("ZPO_LOG_KB", "16", 1);
        setenv("ZPO_LOCK_TIMEOUT", "2", 1); // several writers on a slow machine wait for more than 1
        setenv("ZPO_CRONTAB_SUNDAY", "0", 1);
    }

    support::TempDir dir;
};

extern const Home kHome;
