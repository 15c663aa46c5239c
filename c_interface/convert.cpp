#include <platen/utcore.h>
#include "c_interface/handles.h"

using namespace platen;
using namespace platen::c;

namespace {

struct Conversion {
    /// Of a table of another kind; null when the items stay as they are.
    std::unique_ptr<CPlotStyleTable> table;
    PiaKind kind = PiaKind::Pc3;
    Json notes;
};

void noteStyles(const CPlotStyleTable& table, Json& notes) {
    for (std::size_t place = 0; place < table.size(); ++place) {
        const CPlotStyle& style = *table.style(place);
        if (const std::vector<int> colours = colorsOf(table, style); !colours.empty()) {
            notes["styles"].push_back(
                Json{{"name", ut::encodeUtf8(style.name())}, {"colors", colours}});
        }
    }
}

/// False after a failure.
bool convertTable(State& state, const Content& content, bool toNamed, const std::wstring& prefix,
                  Conversion& conversion) {
    conversion.kind = toNamed ? PiaKind::Stb : PiaKind::Ctb;
    const bool isNamed = content.table && !hasStylePerColour(*content.table);
    if (!content.table) {
        state.fail("wrong-kind", std::string("this is a ") + kindName(content.kind) +
                                     ", no sound plot style table");
        return false;
    }
    if (toNamed && content.kind == FileKind::Ctb && content.table->size() == CAciTable::count) {
        NamedTable named = namedTableOf(*content.table, prefix);
        conversion.table = std::move(named.table);
        conversion.notes["in_order"] = named.inOrder;
        if (conversion.table) {
            noteStyles(*conversion.table, conversion.notes);
        }
    } else if (!toNamed && isNamed) {
        ColourTable made = colourTableOf(*content.table);
        conversion.table = std::move(made.table);
        conversion.notes["lost"] = jsonOf(made.lost);
    } else {
        return true;
    }
    if (!conversion.table) {
        state.fail("wrong-kind", "the table does not say which style each of the 255 colours has");
    }
    return conversion.table != nullptr;
}

}  // namespace

platen_document* platen_document_convert(platen_document* document, const char* to,
                                         const char* prefix, platen_buffer** notes) {
    return with(document, [&](platen_document& file) -> platen_document* {
        const std::string_view word = to == nullptr ? "" : to;
        const std::optional<std::wstring> wide = file.state->textOrNone(prefix, "prefix");
        if (!wide) {
            return nullptr;
        }
        Conversion conversion;
        conversion.kind = file.source.headerKind();
        conversion.notes["schema"] = "platen.convert/1";
        conversion.notes["in_order"] = true;
        conversion.notes["styles"] = Json::array();
        conversion.notes["lost"] = Json::array();
        FileForm form = FileForm::Compressed;
        if (word == "json") {
            form = FileForm::Json;
        } else if (word == "text") {
            form = FileForm::BodyText;
        } else if (word == "ctb" || word == "stb") {
            const Content content = recognise(file.source.input());
            if (!convertTable(*file.state, content, word == "stb", *wide, conversion)) {
                return nullptr;
            }
        } else if (word != "compressed") {
            file.state->fail("argument-invalid",
                             "a document becomes compressed, json, text, ctb or stb");
            return nullptr;
        }
        PiaTree tree;
        if (conversion.table && !conversion.table->writeToBlock(tree.root())) {
            file.state->fail("file-unwritable", "the table cannot be written");
            return nullptr;
        }
        const PiaBlock& root = conversion.table ? tree.root() : *file.source.input().root();
        std::unique_ptr<platen_document> made = documentOf(file.state, root, form, conversion.kind);
        if (made && notes != nullptr) {
            *notes = bufferOf(conversion.notes);
        }
        return made.release();
    });
}
