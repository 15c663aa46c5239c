/// Scenes as files of others' formats. This needs cairo, and is a library of its own.
#pragma once

#include <string>

#include <platen/scene.h>

namespace platen {

/// Dots per inch of pictures.
inline constexpr double usualResolution = 150;
/// No picture has more pixels than this, nor more than 32767 on a side.
inline constexpr double mostPixels = 100e6;

/// A picture file, or why there is none.
struct SceneFile {
    /// The file; empty when there is none.
    std::string bytes{};
    /// English, UTF-8, without its full stop; empty when `bytes` is the file.
    std::string fault{};

    explicit operator bool() const { return fault.empty(); }
};

/// One picture, in which several pages stand below each other.
SceneFile scenePng(const Scene& scene, double resolution = usualResolution);

/// A page for each page, of exactly its size. The same scene gives the same bytes on the same
/// machine, whenever it is drawn: the file has no date.
SceneFile scenePdf(const Scene& scene);

}  // namespace platen
