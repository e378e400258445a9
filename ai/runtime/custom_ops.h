// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ai/runtime/tensor_runtime.h"

namespace kelmo {

/// Makes the operations known that our networks use and the runtime does not have:
///
/// - `Convolution2DTransposeBias`: a transposed convolution with bias, of the person mask. The
///   XNNPACK delegate has one of its own, which runs in place of ours where it is used.
/// - `Landmarks2TransformMatrix`, `TransformTensorBilinear`, `TransformLandmarks`: the face network
///   looks closer at eyes and lips: a rotated box round some landmarks, the features of that box,
///   and the way back of the points found there.
///
/// An operation that gets tensors of another shape than it knows refuses to run, and the network is
/// not made.
void AddCustomOps(const TensorRuntime& runtime, TfLiteInterpreterOptions* options);

}  // namespace kelmo
