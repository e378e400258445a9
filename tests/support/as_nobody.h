// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <cstdlib>

namespace kelmo::test {

/// The superuser may read and write everywhere: becomes nobody for a while. Another user stays.
class AsNobody {
public:
    AsNobody() {
        if (before == 0) changed = seteuid(65534) == 0;
    }
    ~AsNobody() {
        if (changed && seteuid(before) != 0) std::abort();
    }
    AsNobody(const AsNobody&) = delete;

private:
    uid_t before = geteuid();
    bool changed = false;
};

}  // namespace kelmo::test
