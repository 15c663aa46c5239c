#include <algorithm>
#include <functional>

#include <platen/pia.h>
#include <platen/pia_paths.h>
#include <platen/pia_text_forms.h>
#include <platen/utcore.h>
#include "c_interface/handles.h"

using namespace platen;
using namespace platen::c;

namespace {

std::size_t hashOf(std::string_view bytes) { return std::hash<std::string_view>()(bytes); }

ut::ByteBuffer copyOf(std::string_view bytes) {
    ut::ByteBuffer copy;
    copy.reserve(bytes.size());
    std::ranges::copy(bytes, copy.data());
    copy.setSize(bytes.size());
    return copy;
}

/// The file of a handle, which reads nothing yet.
std::unique_ptr<platen_document> emptyDocument(const SharedState& state, std::wstring path) {
    return std::make_unique<platen_document>(platen_document{state, std::move(path)});
}

platen_document* opened(std::unique_ptr<platen_document> document, std::string_view bytes) {
    if (!document->read(bytes)) {
        return nullptr;
    }
    document->mark = FileMark(document->path, bytes);
    document->rememberSavedAs(bytes);
    return document.release();
}

std::wstring valueOf(const PiaItem& item) {
    if (item.type == PiaItemType::Bool) {
        return static_cast<const PiaBool&>(item).value ? L"TRUE" : L"FALSE";
    }
    return static_cast<const PiaTextItem&>(item).value;
}

/// Changes items as they are stored.
template <class Change>
int changeItems(platen_document& document, Change&& change) {
    ItemEditor editor(*document.source.input().root());
    if (!document.state->accept(change(editor))) {
        return 0;
    }
    return !editor.changed() ||
                   document.become(*document.source.input().root(), document.source.form(),
                                   document.source.headerKind())
               ? 1
               : 0;
}

}  // namespace

bool platen_document::read(std::string_view bytes) {
    if (source.readBytes(copyOf(bytes), state->reading())) {
        return true;
    }
    state->fail(source.input().report());
    return false;
}

bool platen_document::become(const PiaBlock& root, FileForm form, PiaKind kind) {
    const std::string before(source.bytes());
    ut::ByteBuffer bytes;
    const WriteResult written = encodeFile(root, form, kind, bytes);
    if (!written) {
        state->fail(written);
    }
    const std::string after(bytes.view());
    if (written && read(after)) {
        return true;
    }
    static_cast<void>(source.readBytes(copyOf(before), state->reading()));
    return false;
}

void platen_document::reset() {
    const std::string bytes(source.bytes());
    static_cast<void>(source.readBytes(copyOf(bytes), state->reading()));
}

void platen_document::rememberSavedAs(std::string_view bytes) { savedHash = hashOf(bytes); }

std::string platen_document::name() const { return ut::encodePath(path); }

std::unique_ptr<platen_document> platen::c::documentOf(const SharedState& state,
                                                       const PiaBlock& root, FileForm form,
                                                       PiaKind kind) {
    std::unique_ptr<platen_document> document = emptyDocument(state, {});
    return document->become(root, form, kind) ? std::move(document) : nullptr;
}

platen_document* platen_document_open(platen_context* context, const char* path) {
    return with(context, [&](platen_context& owner) -> platen_document* {
        const std::optional<std::wstring> wide = owner.state->text(path, "path");
        if (!wide) {
            return nullptr;
        }
        ut::ByteBuffer bytes;
        bool tooLarge = false;
        PiaReport report;
        const ut::SystemError error = ut::readFile(*wide, owner.state->maxBody, bytes, tooLarge);
        if (error || tooLarge) {
            report.fail({.code = tooLarge ? PiaCode::FileTooLarge : PiaCode::FileUnreadable,
                         .found = ut::decodePath(error.message())});
            owner.state->fail(report);
            return nullptr;
        }
        return opened(emptyDocument(owner.state, *wide), bytes.view());
    });
}

platen_document* platen_document_open_bytes(platen_context* context, const void* bytes, size_t size,
                                            const char* path) {
    return with(context, [&](platen_context& owner) -> platen_document* {
        const std::optional<std::wstring> wide = owner.state->textOrNone(path, "path");
        if (!wide) {
            return nullptr;
        }
        return opened(emptyDocument(owner.state, *wide), viewOf(bytes, size));
    });
}

platen_document* platen_document_create_table(platen_context* context, const char* kind,
                                              const char* preset) {
    return with(context, [&](platen_context& owner) -> platen_document* {
        const std::string_view word = kind == nullptr ? "" : kind;
        if (word != "ctb" && word != "stb") {
            owner.state->fail("argument-invalid", "a table is a ctb or an stb");
            return nullptr;
        }
        const bool byColour = word == "ctb";
        const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(byColour, L""));
        PiaTree tree;
        if ((preset != nullptr && !owner.state->accept(applyPreset(preset, *table))) ||
            !table->writeToBlock(tree.root())) {
            return nullptr;
        }
        return documentOf(owner.state, tree.root(), FileForm::Compressed,
                          byColour ? PiaKind::Ctb : PiaKind::Stb)
            .release();
    });
}

platen_document* platen_document_create_configuration(platen_context* context, const char* device) {
    return with(context, [&](platen_context& owner) -> platen_document* {
        const std::optional<std::wstring> name = owner.state->text(device, "device");
        if (!name) {
            return nullptr;
        }
        const BuiltInPlotDevice* builtIn = BuiltInPlotDevice::getByName(OdString(*name));
        const std::unique_ptr<CPlotCfg3> config(
            builtIn == nullptr ? nullptr : CPlotCfg3::create(builtIn->name.c_str()));
        PiaTree tree;
        if (!config || !config->writeToBlock(tree.root())) {
            EditRefusal refusal{EditFault::NotFound, "there is no such device", *name};
            for (const BuiltInPlotDevice& known : BuiltInPlotDevice::s_cBuiltInPlotDevices) {
                refusal.present.emplace_back(known.name.text());
            }
            owner.state->accept(refusal);
            return nullptr;
        }
        return documentOf(owner.state, tree.root(), FileForm::Compressed, PiaKind::Pc3).release();
    });
}

platen_buffer* platen_devices(platen_context* context) {
    return with(context, [](platen_context&) {
        Json json;
        json["schema"] = "platen.devices/1";
        Json& list = json["devices"] = Json::array();
        for (const BuiltInPlotDevice& device : BuiltInPlotDevice::s_cBuiltInPlotDevices) {
            list.push_back(ut::encodeUtf8(device.name.text()));
        }
        return bufferOf(json);
    });
}

void platen_document_destroy(platen_document* document) { delete document; }

const char* platen_document_kind(const platen_document* document) {
    const char* kind = with(document, [](const platen_document& file) {
        // Recognising notes what it finds in the input.
        return kindWord(recognise(const_cast<platen_document&>(file).source.input()).kind);
    });
    return kind == nullptr ? kindWord(FileKind::Pia) : kind;
}

int platen_document_is_changed(const platen_document* document) {
    return document != nullptr && hashOf(document->source.bytes()) != document->savedHash ? 1 : 0;
}

platen_buffer* platen_document_bytes(platen_document* document) {
    return with(document,
                [](platen_document& file) { return bufferOf(std::string(file.source.bytes())); });
}

int platen_document_save(platen_document* document, const char* path) {
    return with(document, [&](platen_document& file) {
        std::optional<std::wstring> place = file.state->textOrNone(path, "path");
        if (!place) {
            return 0;
        }
        if (path == nullptr) {
            place = file.path;
        }
        if (place->empty()) {
            file.state->fail("argument-missing", "the document is from nowhere: name a path");
            return 0;
        }
        const WriteResult written = writeFileBytes(file.source.bytes(), *place, file.mark);
        if (!written) {
            file.state->fail(written);
            return 0;
        }
        file.path = *place;
        file.mark = FileMark(file.path, file.source.bytes());
        file.rememberSavedAs(file.source.bytes());
        return 1;
    });
}

platen_buffer* platen_document_info(platen_document* document) {
    return with(document, [](platen_document& file) {
        PiaInput& input = file.source.input();
        const Content content = readContent(input, file.path, file.state->reading());
        return bufferOf(infoJson(file.name(), input.container(), content));
    });
}

platen_buffer* platen_document_findings(platen_document* document) {
    return with(document, [](platen_document& file) {
        const CheckSettings settings{.reading = file.state->reading()};
        PiaInput input;
        if (file.source.form() == FileForm::BodyText) {
            static_cast<void>(input.openBody(file.source.bytes(), settings.reading));
        } else {
            static_cast<void>(input.openBytes(file.source.bytes(), settings.reading));
        }
        return bufferOf(checkJson(file.name(), checkInput(input, file.path, settings)));
    });
}

platen_buffer* platen_document_items(platen_document* document) {
    return with(document, [](platen_document& file) {
        Json json;
        json["schema"] = "platen.items/1";
        json["file"] = file.name();
        Json& items = json["items"] = Json::array();
        std::size_t depth = 0;
        for (PiaWalk walk(*file.source.input().root()); walk.next();) {
            if (walk.isEnd()) {
                --depth;
                continue;
            }
            const PiaItem& item = walk.item();
            Json entry;
            entry["depth"] = depth;
            entry["name"] = ut::encodeUtf8(item.name);
            entry["type"] = ut::encodeUtf8(piaTypeSuffix(item.type)).substr(1);
            if (item.type == PiaItemType::Block) {
                ++depth;
            } else {
                entry["value"] = ut::encodeUtf8(valueOf(item));
            }
            entry["line"] = item.line() == 0 ? Json() : Json(item.line());
            items.push_back(std::move(entry));
        }
        return bufferOf(json);
    });
}

platen_buffer* platen_document_get(platen_document* document, const char* path) {
    return with(document, [&](platen_document& file) -> platen_buffer* {
        const std::optional<std::wstring> wide = file.state->text(path, "path");
        if (!wide) {
            return nullptr;
        }
        const std::vector<const PiaItem*> found = piaFindItems(*file.source.input().root(), *wide);
        if (found.empty()) {
            file.state->accept(EditRefusal{EditFault::NotFound, "there is no such item", *wide});
            return nullptr;
        }
        const PiaItem& item = *found.front();
        return bufferOf(item.type == PiaItemType::Block
                            ? piaBodyText(static_cast<const PiaBlock&>(item))
                            : ut::encodeUtf8(valueOf(item)));
    });
}

int platen_document_set(platen_document* document, const char* path, const char* value) {
    return with(document, [&](platen_document& file) {
        const std::optional<std::wstring> wide = file.state->text(path, "path");
        const std::optional<std::wstring> text = file.state->textOrNone(value, "value");
        if (!wide || !text) {
            return 0;
        }
        return changeItems(file, [&](ItemEditor& editor) {
            return value == nullptr ? editor.addBlock(*wide) : editor.set(*wide, *text);
        });
    });
}

int platen_document_remove(platen_document* document, const char* path) {
    return with(document, [&](platen_document& file) {
        const std::optional<std::wstring> wide = file.state->text(path, "path");
        return wide ? changeItems(file, [&](ItemEditor& editor) { return editor.remove(*wide); })
                    : 0;
    });
}
