#pragma once

// The superuser may read and write every file. A test of permissions that runs as the superuser
// acts as an ordinary user for as long as this object lives.

#ifdef __linux__
#include <sys/types.h>
#include <unistd.h>

namespace tiltpole_test {

class OrdinaryUser {
 public:
  OrdinaryUser() : before_(geteuid()), is_ordinary_(before_ != 0 || seteuid(kNobody) == 0) {}
  ~OrdinaryUser() {
    if (before_ != geteuid() && seteuid(before_) != 0) _exit(1);
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  // False where the system does not let the superuser step down.
  bool IsOrdinary() const { return is_ordinary_; }

 private:
  static constexpr uid_t kNobody = 65534;
  uid_t before_;
  bool is_ordinary_;
};

}  // namespace tiltpole_test
#endif
