// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <opencv2/core/utility.hpp>
#include <string>
#include <vector>

#include "geometry/trace/bitmap.h"
#include "geometry/trace/bitmap_trace_path.h"

namespace kelmo {

/// Traces a one-channel picture: closed outlines of cubic Bezier segments and corners, in
/// pixel-corner coordinates (origin top left, y down).
///
/// One object serves one call of `Trace`. Both bitmaps are borrowed during the call; the working
/// one must hold the same pixels and is used up. Paths are found on the calling thread and worked
/// out on the threads of OpenCV, with the same result for any number of them. There are no errors:
/// a picture without ink gives no path, one of ink alone gives the path around it.
class BitmapTrace {
public:
    BitmapTrace() = default;
    virtual ~BitmapTrace() { Clear(); }
    BitmapTrace(const BitmapTrace&) = delete;
    BitmapTrace& operator=(const BitmapTrace&) = delete;

    void Trace(Bitmap* source, Bitmap* work);
    /// In order of discovery: rows from the top, within a row from the left.
    const std::vector<std::unique_ptr<Path>>& GetPathList() const { return pathList; }
    void Clear();

protected:
    friend class parallelBitmapTraceInvoker;

    void FindPaths();
    std::unique_ptr<Path> WalkPath(int32_t x, int32_t y) const;
    bool TurnsRight(const Path& path, int32_t x, int32_t y) const;
    bool MajorityIsInk(int32_t x, int32_t y) const;
    void WorkOut(Path& path) const;

    Bitmap* bitmap = nullptr;      ///< read for `Path::sign` only
    Bitmap* workBitmap = nullptr;  ///< used up while paths are found
    std::vector<std::unique_ptr<Path>> pathList;
    bool isReady = false;
    /// What to do where ink touches by a corner: "right", "left", "black" (join ink), "white" (join
    /// the empty), "majority" or "minority" (join what is more or less frequent around).
    std::string turnPolicy = "minority";
    int32_t turdSize = 2;       ///< paths of this area in pixels and below are dropped
    int32_t optCurve = 1;       ///< 0 leaves curves unjoined
    int32_t alphaMax = 1;       ///< from this alpha on a vertex is a corner
    double optTolerance = 0.2;  ///< pixels that a joined curve may stray
};

/// Works out the paths of a range, each on its own.
class parallelBitmapTraceInvoker : public cv::ParallelLoopBody {
public:
    /// `order` maps places of the loop to indices of the path list. Both are borrowed.
    parallelBitmapTraceInvoker(const BitmapTrace* owner, const std::vector<int32_t>* places)
        : trace(owner), order(places) {}
    void operator()(const cv::Range& range) const override;

private:
    const BitmapTrace* trace;
    const std::vector<int32_t>* order;
};

}  // namespace kelmo
