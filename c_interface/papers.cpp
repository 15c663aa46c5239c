#include <platen/inspect_papers.h>
#include <platen/utcore.h>
#include "c_interface/handles.h"

using namespace platen;
using namespace platen::c;

struct platen_papers {
    SharedState state;
    std::string name;
    PaperFile file{};
};

namespace {

/// The shape that a caller describes; nothing after a failure.
std::optional<PaperShape> shapeOf(State& state, double width, double height, const double* margins,
                                  const char* units) {
    PaperShape shape{.width = width, .height = height, .margins = {}, .units = {}};
    if (margins != nullptr) {
        shape.margins = PaperShape::Margins{margins[0], margins[1], margins[2], margins[3]};
    }
    const std::string_view word = units == nullptr ? "" : units;
    using enum OdDbPlotSettings::PlotPaperUnits;
    for (const auto unit : {kMillimeters, kInches, kPixels}) {
        if (word == unitSymbol(unit)) {
            shape.units = unit;
        }
    }
    if (units != nullptr && !shape.units) {
        state.fail("argument-invalid", "units are mm, in or px");
        return std::nullopt;
    }
    return shape;
}

template <class Change>
int changePapers(platen_papers* papers, const char* name, Change&& change) noexcept {
    return with(papers, [&](platen_papers& list) {
        const std::optional<std::wstring> wide = list.state->text(name, "name");
        if (!wide) {
            return 0;
        }
        PaperEditor editor(list.file);
        return change(*list.state, editor, *wide) ? 1 : 0;
    });
}

/// Notes why nothing, or not both, was saved: what the file that could not be written has to say.
void fail(State& state, const SavedPapers& saved) {
    for (const auto* document : {&saved.configuration, &saved.parameters}) {
        if (saved.done->fault == EditFault::FileUnwritable && *document && !(*document)->result) {
            state.fail((*document)->result);
            return;
        }
    }
    static_cast<void>(state.accept(saved.done));
}

Json savedJson(const std::optional<SavedPapers::Document>& document) {
    if (!document) {
        return {};
    }
    Json json;
    json["path"] = ut::encodePath(document->path);
    json["papers"] = document->papers;
    Json& lost = json["lost"] = Json::array();
    for (const std::wstring& path : document->lost) {
        lost.push_back(ut::encodeUtf8(path));
    }
    return json;
}

}  // namespace

platen_papers* platen_papers_open(platen_context* context, const char* path) {
    return with(context, [&](platen_context& owner) -> platen_papers* {
        const std::optional<std::wstring> wide = owner.state->text(path, "path");
        if (!wide) {
            return nullptr;
        }
        auto papers =
            std::make_unique<platen_papers>(platen_papers{owner.state, ut::encodePath(*wide)});
        PiaReport report;
        const EditResult done = papers->file.open(*wide, PaperFile::Purpose::Edit, report);
        if (!done && done->fault == EditFault::FileUnreadable) {
            owner.state->fail(report);
            return nullptr;
        }
        return owner.state->accept(done) ? papers.release() : nullptr;
    });
}

void platen_papers_destroy(platen_papers* papers) { delete papers; }

platen_buffer* platen_papers_list(platen_papers* papers) {
    return with(papers, [](platen_papers& list) {
        Json json;
        json["schema"] = "platen.paper-list/1";
        json["file"] = list.name;
        json["current"] = list.file.isConfiguration()
                              ? Json(ut::encodeUtf8(list.file.config().media.size.name))
                              : Json();
        double width = 0;
        double height = 0;
        list.file.largestPaper(width, height);
        json["largest"] = Json{{"width", width}, {"height", height}};
        Json& entries = json["papers"] = Json::array();
        std::vector<CustomPaperSize> sizes;
        list.file.config().getCustomPaperSizes(sizes);
        for (const CustomPaperSize& size : sizes) {
            entries.push_back(Json::parse(paperJson(shown(size), list.name), nullptr, false));
        }
        return bufferOf(json);
    });
}

int platen_papers_add(platen_papers* papers, const char* name, double width, double height,
                      const double* margins, const char* units) {
    return changePapers(
        papers, name, [&](State& state, PaperEditor& editor, const std::wstring& wide) {
            const std::optional<PaperShape> shape = shapeOf(state, width, height, margins, units);
            return shape && state.accept(editor.add(wide, *shape));
        });
}

int platen_papers_resize(platen_papers* papers, const char* name, double width, double height,
                         const double* margins, const char* units) {
    return changePapers(
        papers, name, [&](State& state, PaperEditor& editor, const std::wstring& wide) {
            const std::optional<PaperShape> shape = shapeOf(state, width, height, margins, units);
            return shape && state.accept(editor.resize(wide, *shape));
        });
}

int platen_papers_rename(platen_papers* papers, const char* name, const char* new_name) {
    return changePapers(
        papers, name, [&](State& state, PaperEditor& editor, const std::wstring& wide) {
            const std::optional<std::wstring> other = state.text(new_name, "new_name");
            return other && state.accept(editor.rename(wide, *other));
        });
}

int platen_papers_remove(platen_papers* papers, const char* name) {
    return changePapers(papers, name,
                        [](State& state, PaperEditor& editor, const std::wstring& wide) {
                            return state.accept(editor.remove(wide));
                        });
}

platen_buffer* platen_papers_save(platen_papers* papers) {
    return with(papers, [](platen_papers& list) -> platen_buffer* {
        const SavedPapers saved = list.file.save();
        if (!saved.done) {
            fail(*list.state, saved);
            return nullptr;
        }
        Json json;
        json["schema"] = "platen.papers-saved/1";
        json["parameters"] = savedJson(saved.parameters);
        json["configuration"] = savedJson(saved.configuration);
        json["names_other_parameters"] = saved.namesOtherParameters;
        return bufferOf(json);
    });
}
