#include <numeric>

#include <platen/utcore.h>
#include "c_interface/handles.h"
#include "plotstyle/palette.h"

using namespace platen;
using namespace platen::c;

namespace {

/// Does `work` with the table of a document; nothing of its type when it holds none.
template <class Work>
auto withTable(platen_document* document, Work&& work) noexcept {
    return with(document, [&](platen_document& file) {
        TableEditor editor(file.source);
        return file.state->accept(editor.open()) ? work(file, editor)
                                                 : decltype(work(file, editor)){};
    });
}

/// Changes the table as `change` does. What it does not accept it has noted, and changes nothing.
template <class Change>
int changeTable(platen_document* document, Change&& change) noexcept {
    return withTable(document, [&](platen_document& file, TableEditor& editor) {
        if (!change(*file.state, editor)) {
            return 0;
        }
        PiaTree tree;
        if (!editor.writeTo(tree.root())) {
            file.state->fail("file-unwritable", "the table cannot be written");
            return 0;
        }
        return !editor.changed() ||
                       file.become(tree.root(), file.source.form(), file.source.headerKind())
                   ? 1
                   : 0;
    });
}

/// The places that a selection names; all for NULL. False after a failure.
bool select(State& state, const TableEditor& editor, const char* selection,
            std::vector<std::size_t>& places) {
    if (selection == nullptr) {
        places.resize(editor.table().size());
        std::iota(places.begin(), places.end(), std::size_t{0});
        return true;
    }
    const std::optional<std::wstring> wide = state.text(selection, "selection");
    return wide && state.accept(editor.select(*wide, places));
}

bool selectOne(State& state, const TableEditor& editor, const char* style, std::size_t& place) {
    const std::optional<std::wstring> wide = state.text(style, "style");
    return wide && state.accept(editor.selectOne(*wide, place));
}

}  // namespace

platen_buffer* platen_styles(platen_document* document, const char* selection) {
    return withTable(document, [&](platen_document& file, TableEditor& editor) {
        std::vector<std::size_t> places;
        return select(*file.state, editor, selection, places)
                   ? bufferOf(stylesJson(file.name(), editor.table(), places))
                   : nullptr;
    });
}

int platen_style_set(platen_document* document, const char* selection, const char* assignment) {
    return changeTable(document, [&](State& state, TableEditor& editor) {
        std::vector<std::size_t> places;
        const std::optional<std::wstring> wide = state.text(assignment, "assignment");
        return wide && select(state, editor, selection, places) &&
               state.accept(editor.set(places, *wide));
    });
}

int platen_style_add(platen_document* document, const char* name, const char* like) {
    return changeTable(document, [&](State& state, TableEditor& editor) {
        std::size_t place = 0;
        const std::optional<std::wstring> wide = state.text(name, "name");
        return wide && (like == nullptr || selectOne(state, editor, like, place)) &&
               state.accept(editor.add(*wide, like == nullptr ? nullptr : &place));
    });
}

int platen_style_remove(platen_document* document, const char* selection) {
    return changeTable(document, [&](State& state, TableEditor& editor) {
        std::vector<std::size_t> places;
        const std::optional<std::wstring> wide = state.text(selection, "selection");
        return wide && state.accept(editor.select(*wide, places)) &&
               state.accept(editor.remove(places));
    });
}

int platen_style_rename(platen_document* document, const char* style, const char* name) {
    return changeTable(document, [&](State& state, TableEditor& editor) {
        std::size_t place = 0;
        const std::optional<std::wstring> wide = state.text(name, "name");
        return wide && selectOne(state, editor, style, place) &&
               state.accept(editor.rename(place, *wide));
    });
}

int platen_style_copy(platen_document* document, const char* from, const char* selection) {
    return changeTable(document, [&](State& state, TableEditor& editor) {
        std::size_t place = 0;
        std::vector<std::size_t> places;
        if (!selectOne(state, editor, from, place) || !select(state, editor, selection, places)) {
            return false;
        }
        for (const std::size_t to : places) {
            editor.copy(place, to);
        }
        return true;
    });
}

platen_buffer* platen_styles_merge_equal(platen_document* document) {
    Json json;
    json["schema"] = "platen.merged-styles/1";
    const int done = changeTable(document, [&](State& state, TableEditor& editor) {
        const EqualStyles groups = equalStyles(editor.table());
        Json& list = json["groups"] = Json::array();
        for (const std::vector<std::size_t>& group : groups) {
            Json names = Json::array();
            for (const std::size_t place : group) {
                names.push_back(ut::encodeUtf8(editor.table().style(place)->name()));
            }
            list.push_back(std::move(names));
        }
        return state.accept(editor.merge(groups));
    });
    return done != 0 ? with(document, [&](platen_document&) { return bufferOf(json); }) : nullptr;
}

platen_buffer* platen_lineweights(platen_document* document) {
    return withTable(document, [](platen_document& file, TableEditor& editor) {
        Json json;
        json["schema"] = "platen.lineweights/1";
        json["file"] = file.name();
        Json& list = json["lineweights"] = Json::array();
        for (std::size_t index = 0; index < CCustomLineweightTable::count; ++index) {
            Json entry;
            entry["number"] = index;
            entry["millimetres"] = editor.table().customLineweights()[index];
            Json& users = entry["styles"] = Json::array();
            for (std::size_t place = 0; place < editor.table().size(); ++place) {
                if (editor.table().style(place)->lineWeight() == static_cast<std::int32_t>(index)) {
                    users.push_back(place + 1);
                }
            }
            list.push_back(std::move(entry));
        }
        return bufferOf(json);
    });
}

int platen_lineweight_set(platen_document* document, uint32_t index, const char* value) {
    return changeTable(document, [&](State& state, TableEditor& editor) {
        if (index >= CCustomLineweightTable::count) {
            state.fail("argument-invalid", "line weights are numbered 0 to 26");
            return false;
        }
        const std::optional<std::wstring> wide = state.text(value, "value");
        return wide && state.accept(editor.setLineWeight(index, *wide));
    });
}

platen_buffer* platen_table_csv(platen_document* document) {
    return withTable(document, [](platen_document&, TableEditor& editor) {
        return bufferOf(tableCsv(editor.table()));
    });
}

int platen_table_read_csv(platen_document* document, const void* bytes, size_t size) {
    return changeTable(document, [&](State& state, TableEditor& editor) {
        return state.accept(editor.readCsv(viewOf(bytes, size)));
    });
}

platen_buffer* platen_style_settings(platen_context* context) {
    return with(context, [](platen_context&) {
        Json json;
        json["schema"] = "platen.style-settings/1";
        Json& list = json["settings"] = Json::array();
        for (const StyleSetting& setting : styleSettings()) {
            list.push_back(
                Json{{"word", setting.word}, {"key", setting.key}, {"values", setting.values}});
        }
        return bufferOf(json);
    });
}

platen_buffer* platen_presets(platen_context* context) {
    return with(context, [](platen_context&) {
        Json json;
        json["schema"] = "platen.presets/1";
        Json& list = json["presets"] = Json::array();
        for (const TablePreset& preset : tablePresets()) {
            list.push_back(Json{{"name", preset.name}, {"purpose", preset.purpose}});
        }
        return bufferOf(json);
    });
}

platen_buffer* platen_palette(platen_context* context) {
    return with(context, [](platen_context&) {
        Json json;
        json["schema"] = "platen.palette/1";
        Json& list = json["colors"] = Json::array();
        for (const std::uint32_t color : plot_style::palette) {
            std::string text = "#000000";
            for (std::size_t place = 6, rest = color; place > 0; --place, rest /= 16) {
                text[place] = "0123456789abcdef"[rest % 16];
            }
            list.push_back(text);
        }
        return bufferOf(json);
    });
}
