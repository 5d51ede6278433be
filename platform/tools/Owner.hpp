#pragma once

#include <sys/types.h>

namespace zpo {

/// A tool of root works in a state directory of another user as that user, so that whatever it creates there belongs to
/// those who use it, and nothing that lies there can lead it elsewhere. A missing state directory is made for the owner
/// of the log directory. Otherwise, and for other users, nothing changes. Throws std::runtime_error.
void actAsOwnerOfState();

/// While it lives the tool acts as the user who called it: for files that are named on the command line.
class AsCaller {
  public:
    AsCaller();
    AsCaller(const AsCaller&) = delete;
    AsCaller& operator=(const AsCaller&) = delete;
    ~AsCaller();

  private:
    const uid_t acting_;
};

} // namespace zpo
