#include <platen/compare.h>
#include <platen/utcore.h>
#include "c_interface/handles.h"

using namespace platen;
using namespace platen::c;

namespace {

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text.append(line).push_back('\n');
    }
    return text;
}

ComparedFile comparedFile(platen_document& file) {
    return {file.name(), recognise(file.source.input()).kind};
}

/// Takes the tree of a document that was changed in place, unless it became none; then the
/// document is as it was.
bool keepChanges(platen_document& file, const DocumentState& before) {
    const std::string lost = lostDocument(before, documentState(file.source.input()));
    if (lost.empty()) {
        return file.become(*file.source.input().root(), file.source.form(),
                           file.source.headerKind());
    }
    file.reset();
    file.state->fail("value-invalid", lost);
    return false;
}

}  // namespace

platen_buffer* platen_compare(platen_document* before, platen_document* after) {
    return with(after, [&](platen_document& other) {
        return with(before, [&](platen_document& one) {
            return bufferOf(diffJson(comparedFile(one), comparedFile(other),
                                     compare(one.source.input(), other.source.input())));
        });
    });
}

platen_buffer* platen_compare_text(platen_document* before, platen_document* after) {
    return with(after, [&](platen_document& other) {
        return with(before, [&](platen_document& one) {
            return bufferOf(joined(describe(compare(one.source.input(), other.source.input()))));
        });
    });
}

platen_buffer* platen_apply(platen_document* document, const char* changes) {
    return with(document, [&](platen_document& file) -> platen_buffer* {
        ChangeList list;
        if (!file.state->accept(readChanges(changes == nullptr ? "" : changes, list))) {
            return nullptr;
        }
        const DocumentState before = documentState(file.source.input());
        const ApplyResult applied = applyChanges(*file.source.input().root(), list.changes);
        if (applied.made > 0 && !keepChanges(file, before)) {
            return nullptr;
        }
        Json json;
        json["schema"] = "platen.apply/1";
        json["made"] = applied.made;
        json["already_there"] = applied.alreadyThere;
        json["misfits"] = jsonOf(describeMisfits(list.changes, applied));
        return bufferOf(json);
    });
}

platen_buffer* platen_merge(platen_document* base, platen_document* ours, platen_document* theirs) {
    return with(ours, [&](platen_document& mine) -> platen_buffer* {
        if (base == nullptr || theirs == nullptr) {
            mine.state->fail("argument-missing", "a document is NULL");
            return nullptr;
        }
        const DocumentState before = documentState(mine.source.input());
        if (recognise(base->source.input()).kind != before.kind ||
            recognise(theirs->source.input()).kind != before.kind) {
            mine.state->fail("wrong-kind", "the three files are not of one kind");
            return nullptr;
        }
        const MergeResult merged = merge(*base->source.input().root(), *mine.source.input().root(),
                                         *theirs->source.input().root());
        if (merged.taken > 0 && !keepChanges(mine, before)) {
            return nullptr;
        }
        Json json;
        json["schema"] = "platen.merge-result/1";
        json["taken"] = merged.taken;
        json["conflicts"] = jsonOf(describe(merged.conflicts));
        return bufferOf(json);
    });
}

platen_document* platen_repair(platen_context* context, const void* bytes, size_t size,
                               const char* path, int safe_only, platen_buffer** report) {
    return with(context, [&](platen_context& owner) -> platen_document* {
        const std::optional<std::wstring> wide = owner.state->textOrNone(path, "path");
        if (!wide) {
            return nullptr;
        }
        const RepairResult result = repair(
            viewOf(bytes, size),
            {.limits = owner.state->reading().limits, .file = *wide, .safeOnly = safe_only != 0});
        if (report != nullptr) {
            *report = bufferOf(repairJson(ut::encodePath(*wide), result));
        }
        if (!result) {
            owner.state->fail("unusable", result.reason);
            return nullptr;
        }
        platen_document* document =
            platen_document_open_bytes(context, result.bytes.data(), result.bytes.size(), path);
        if (document != nullptr) {
            // What would be replaced is the damaged file.
            document->mark = FileMark(document->path, viewOf(bytes, size));
            document->rememberSavedAs(viewOf(bytes, size));
        }
        return document;
    });
}
