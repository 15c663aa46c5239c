/// The colours that charts are drawn in, besides those of the pens. On white the inks have a
/// contrast of 4.5 and more.
#pragma once

#include <platen/scene.h>

namespace platen::chart {

inline constexpr SceneColor ink{0x1D, 0x27, 0x33};
/// Of what explains.
inline constexpr SceneColor quiet{0x5A, 0x66, 0x72};
/// Of thin lines between rows and around swatches.
inline constexpr SceneColor hairline{0xD9, 0xDF, 0xE5};
inline constexpr SceneColor outline{0x8A, 0x95, 0xA1};
/// Of what is chosen.
inline constexpr SceneColor accent{0x0B, 0x5F, 0xB8};
/// Of what asks for a second look.
inline constexpr SceneColor notable{0x9A, 0x52, 0x00};
inline constexpr SceneColor white{0xFF, 0xFF, 0xFF};

}  // namespace platen::chart
