#pragma once

#include <unistd.h>

namespace tessaly::testing {

// As long as it lives, the superuser is nobody in particular, so that the modes of files and folders count.
// Anyone else stays who he is.
class Unprivileged {
  public:
    Unprivileged() {
        if (!isSuperuser_) return;
        wasChanged_ = ::setegid(kNobody) == 0 && ::seteuid(kNobody) == 0;
    }
    ~Unprivileged() {
        if (!isSuperuser_) return;
        isBack_ = ::seteuid(0) == 0 && ::setegid(0) == 0;
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

    // Whether modes count now.
    bool IsSo() const { return !isSuperuser_ || wasChanged_; }

  private:
    static constexpr unsigned kNobody = 65534;

    bool isSuperuser_ = ::geteuid() == 0;
    bool wasChanged_ = false;
    bool isBack_ = false;
};

}  // namespace tessaly::testing
