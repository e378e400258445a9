// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "host/media/picture/picture.h"

namespace kelmo::host {

// Takes finished frames and hands them on (to a MediaWriter, say) on a thread of its own, in order,
// so that encoding runs beside rendering. The buffers go round.
//
// Thread rule: Put, Finish, Cancel and the destructor on one thread; `consume` runs on the thread
// of this object only. After Finish or Cancel that thread is gone and the writer is the caller's
// again.
class FrameDrain {
public:
    using Consume = std::function<void(const Picture& picture)>;

    // At most `depth` frames wait (at least 1); Put blocks while they do.
    explicit FrameDrain(Consume consume, int depth = 3);
    ~FrameDrain();  // as Cancel
    FrameDrain(const FrameDrain&) = delete;
    FrameDrain& operator=(const FrameDrain&) = delete;

    // Exchanges `picture` for a spare one (of any size, possibly empty): Resize it before use.
    // Throws what `consume` threw for an earlier frame.
    void Put(Picture& picture);

    // Waits until every frame was consumed. Throws what `consume` threw.
    void Finish();

    // Drops what waits, lets the frame in work end. Never throws.
    void Cancel() noexcept;

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};

}  // namespace kelmo::host
