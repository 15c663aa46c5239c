/// Searching a picture for a smaller one, beside the search that compares pixel by pixel.

#include <benchmark/benchmark.h>
#include <wx/image.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>

#include <platen/gui_images.h>

namespace {

constexpr int width = 3840;
constexpr int height = 2160;
constexpr int side = 64;

struct Search {
    wxImage image;
    wxImage sub;
};

wxImage noise(int imageWidth, int imageHeight, unsigned seed) {
    wxImage image(imageWidth, imageHeight, false);
    std::mt19937 random(seed);
    unsigned char* data = image.GetData();
    for (int at = 0; at < imageWidth * imageHeight * 3; ++at) {
        data[at] = static_cast<unsigned char>(random());
    }
    return image;
}

/// Of any colours, so that nearly all places differ in their first pixel.
Search absent() { return {noise(width, height, 1), noise(side, side, 2)}; }

Search present() {
    Search search = absent();
    search.image.Paste(search.sub, width - side, height - side);
    return search;
}

/// In the upper left corner, where every search begins.
Search first() {
    Search search = absent();
    search.image.Paste(search.sub, 0, 0);
    return search;
}

Search firstPixel() { return {noise(8, 8, 1), noise(1, 1, 1)}; }

Search tiny() { return {noise(16, 16, 1), noise(4, 4, 2)}; }

/// A single pixel, of a colour that is not there.
Search absentPixel() {
    Search search{wxImage(width, height), wxImage(1, 1)};
    search.sub.SetRGB(0, 0, 0, 0, 1);
    return search;
}

/// Columns of one colour but for the last pixel, in each of which all but that are equal.
Search thin() {
    Search search{wxImage(width, height), wxImage(1, side)};
    search.sub.SetRGB(0, side - 1, 0, 0, 1);
    search.image.SetRGB(width / 2, height / 2, 0, 0, 2);
    return search;
}

/// All of one colour, but what is searched for has another at (`differs`, 0).
template <int differs>
Search uniform() {
    Search search{wxImage(width, height), wxImage(side, side)};
    search.sub.SetRGB(differs, 0, 0, 0, 1);
    return search;
}

/// All of one colour but for a pixel each, which is the last one of what is searched for: each
/// place is compared to its end.
Search adversarial() {
    Search search{wxImage(width, height), wxImage(side, side)};
    search.sub.SetRGB(side - 1, side - 1, 0, 0, 1);
    search.image.SetRGB(width / 2, height / 2, 0, 0, 2);
    return search;
}

struct Case {
    const char* name = nullptr;
    Search (*make)() = nullptr;
    bool found = false;
    /// Naively many seconds.
    bool takesLong = false;
};

constexpr std::array cases{
    Case{"first", first, true},
    Case{"present", present, true},
    Case{"absent", absent, false},
    Case{"first_pixel", firstPixel, true},
    Case{"tiny", tiny, false},
    Case{"pixel", absentPixel, false},
    Case{"uniform_1", uniform<1>, false},
    Case{"uniform_2", uniform<2>, false},
    Case{"uniform_9", uniform<9>, false},
    Case{"uniform_17", uniform<17>, false},
    Case{"uniform_40", uniform<40>, false},
    Case{"thin", thin, false},
    Case{"adversarial", adversarial, false, true},
};

bool findSubImageNaively(wxImage& image, const wxImage& sub, int& foundX, int& foundY) {
    if (!image.IsOk() || !sub.IsOk()) {
        return false;
    }
    const unsigned char* const pixels = image.GetData();
    const unsigned char* const wanted = sub.GetData();
    const std::ptrdiff_t imageWidth = image.GetWidth();
    const std::ptrdiff_t subWidth = sub.GetWidth();
    const std::ptrdiff_t subHeight = sub.GetHeight();
    const auto matches = [&](std::ptrdiff_t x, std::ptrdiff_t y) {
        for (std::ptrdiff_t row = 0; row < subHeight; ++row) {
            for (std::ptrdiff_t column = 0; column < subWidth; ++column) {
                const unsigned char* a = pixels + ((y + row) * imageWidth + x + column) * 3;
                const unsigned char* b = wanted + (row * subWidth + column) * 3;
                if (a[0] != b[0] || a[1] != b[1] || a[2] != b[2]) {
                    return false;
                }
            }
        }
        return true;
    };
    for (std::ptrdiff_t y = 0; y < image.GetHeight() - subHeight + 1; ++y) {
        for (std::ptrdiff_t x = 0; x < imageWidth - subWidth + 1; ++x) {
            if (matches(x, y)) {
                foundX = static_cast<int>(x);
                foundY = static_cast<int>(y);
                return true;
            }
        }
    }
    return false;
}

void search(benchmark::State& state, const Case& what, bool naively) {
    Search search = what.make();
    // Both are called alike, which is what counts with a search of a few nanoseconds.
    bool (*find)(wxImage&, const wxImage&, int&, int&) =
        naively ? findSubImageNaively : wut::ImageUtils::findSubImage;
    benchmark::DoNotOptimize(find);
    for (auto _ : state) {
        int x = 0;
        int y = 0;
        const bool found = find(search.image, search.sub, x, y);
        if (found != what.found) {
            state.SkipWithError("the search is wrong");
            break;
        }
        benchmark::DoNotOptimize(x + y);
    }
}

const bool added = [] {
    for (const Case& what : cases) {
        for (const bool naively : {false, true}) {
            auto* const measurement = benchmark::RegisterBenchmark(
                ((naively ? "findSubImageNaively/" : "findSubImage/") + std::string(what.name))
                    .c_str(),
                [&what, naively](benchmark::State& state) { search(state, what, naively); });
            measurement->Unit(benchmark::kMillisecond);
            if (naively && what.takesLong) {
                measurement->Iterations(1)->Repetitions(1);
            }
        }
    }
    return true;
}();

}  // namespace
