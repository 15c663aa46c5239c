#include <algorithm>
#include <array>
#include <chrono>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include <platen/house_bundle.h>
#include <platen/utcore.h>
#include "edit/refusal.h"
#include "house/portable_names.h"

namespace platen {
namespace {

constexpr const char* schema = "platen.bundle/1";
constexpr const char* damagedWord = "damaged";

using Writing = nlohmann::ordered_json;
// Members that nobody has asked for may be many: this kind finds each in little time.
using Reading = nlohmann::json;

std::string shown(std::wstring_view text) { return ut::printable(quoted(text)); }

Writing orNull(const std::wstring& text) {
    return text.empty() ? Writing() : Writing(ut::encodeUtf8(text));
}

Writing fileJson(const BundledFile& file) {
    Writing json;
    json["path"] = ut::encodeUtf8(file.path);
    json["place"] = ut::encodeUtf8(file.place);
    json["kind"] = file.kind ? kindWord(*file.kind) : damagedWord;
    json["bytes"] = file.bytes;
    json["sha256"] = file.sha256;
    json["modified"] = file.modified;
    json["printer"] = orNull(file.printer);
    json["parameters"] = orNull(file.parameters);
    json["parameters_path"] = orNull(file.parametersPath);
    return json;
}

/// The parser's events while it looks whether a text is JSON that nests little, so that nothing
/// deep is ever made.
class DepthGuard : public nlohmann::json_sax<Reading> {
public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_object(std::size_t) override { return ++depth_ <= deepest; }
    bool key(string_t&) override { return true; }
    bool end_object() override { return leave(); }
    bool start_array(std::size_t) override { return ++depth_ <= deepest; }
    bool end_array() override { return leave(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }

private:
    static constexpr int deepest = 16;

    bool leave() {
        --depth_;
        return true;
    }

    int depth_ = 0;
};

const Reading* member(const Reading& object, const char* name) {
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

/// One line of text; null is an empty one.
bool readText(const Reading& object, const char* name, std::wstring& text) {
    const Reading* json = member(object, name);
    if (json == nullptr || json->is_null()) {
        text.clear();
        return true;
    }
    const auto* utf8 = json->get_ptr<const std::string*>();
    return utf8 != nullptr && ut::decodeUtf8(*utf8, text) &&
           std::ranges::none_of(text, [](wchar_t letter) { return letter < L' '; });
}

bool readKind(const Reading& object, std::optional<FileKind>& kind) {
    constexpr std::array all{FileKind::Ctb, FileKind::Stb, FileKind::Pc3, FileKind::Pmp,
                             FileKind::Pia};
    std::wstring word;
    if (!readText(object, "kind", word)) {
        return false;
    }
    const auto found = std::ranges::find_if(
        all, [&](FileKind candidate) { return ut::encodeUtf8(word) == kindWord(candidate); });
    kind = found == all.end() ? std::nullopt : std::optional(*found);
    return kind || ut::encodeUtf8(word) == damagedWord;
}

bool readNumber(const Reading& object, const char* name, std::uint64_t& value) {
    const Reading* json = member(object, name);
    const auto* number =
        json == nullptr ? nullptr : json->get_ptr<const Reading::number_unsigned_t*>();
    value = number == nullptr ? 0 : *number;
    return number != nullptr;
}

bool readTime(const Reading& object, std::int64_t& seconds) {
    // From 1601 to 9999, which all systems can say.
    constexpr std::int64_t first = -11'644'473'600;
    constexpr std::int64_t last = 253'402'300'799;
    const Reading* json = member(object, "modified");
    const auto* number =
        json == nullptr ? nullptr : json->get_ptr<const Reading::number_integer_t*>();
    seconds = number == nullptr ? 0 : std::clamp(std::int64_t{*number}, first, last);
    return number != nullptr;
}

bool isDigest(const std::wstring& text) {
    return text.size() == 64 && std::ranges::all_of(text, [](wchar_t digit) {
               return (digit >= L'0' && digit <= L'9') || (digit >= L'a' && digit <= L'f');
           });
}

/// Why this is no file of a bundle; empty when it is one.
std::string readFile(const Reading& json, BundledFile& file) {
    std::wstring digest;
    if (!json.is_object() || !readText(json, "path", file.path) ||
        !readText(json, "place", file.place) || !readKind(json, file.kind) ||
        !readNumber(json, "bytes", file.bytes) || !readText(json, "sha256", digest) ||
        !isDigest(digest) || !readTime(json, file.modified) ||
        !readText(json, "printer", file.printer) ||
        !readText(json, "parameters", file.parameters) ||
        !readText(json, "parameters_path", file.parametersPath)) {
        return "a file in it is not described as it should be";
    }
    file.sha256 = ut::encodeUtf8(digest);
    return {};
}

EditResult refuseManifest(const std::string& reason) {
    return refuse(EditFault::ValueInvalid,
                  std::string("the manifest (") + manifestName + ") cannot be used: " + reason);
}

std::string readFiles(const Reading& list, BundleManifest& manifest) {
    house::PortablePaths paths;
    static_cast<void>(paths.takeExactly(ut::decodePath(manifestName)));
    for (const Reading& entry : list) {
        BundledFile file;
        if (std::string fault = readFile(entry, file); !fault.empty()) {
            return fault;
        }
        if (const std::string fault = paths.takeExactly(file.path); !fault.empty()) {
            return "the path " + shown(file.path) + " is not safe: " + fault;
        }
        manifest.files.push_back(std::move(file));
    }
    std::vector<std::wstring_view> known;
    for (const BundledFile& file : manifest.files) {
        known.push_back(file.path);
    }
    std::ranges::sort(known);
    const bool sound = std::ranges::all_of(manifest.files, [&](const BundledFile& file) {
        return file.parametersPath.empty() ||
               std::ranges::binary_search(known, std::wstring_view(file.parametersPath));
    });
    return sound ? "" : "a file names a PMP that is not in the bundle";
}

bool readFolders(const Reading& json, std::vector<std::wstring>& folders) {
    const Reading* list = member(json, "folders");
    for (std::size_t index = 0; list != nullptr && list->is_array() && index < list->size();
         ++index) {
        const auto* utf8 = (*list)[index].get_ptr<const std::string*>();
        if (utf8 == nullptr || !ut::decodeUtf8(*utf8, folders.emplace_back())) {
            return false;
        }
    }
    return list == nullptr || list->is_array();
}

bool readLeftOut(const Reading& json, std::vector<LeftOutFile>& files) {
    const Reading* list = member(json, "left_out");
    for (std::size_t index = 0; list != nullptr && list->is_array() && index < list->size();
         ++index) {
        const Reading& entry = (*list)[index];
        LeftOutFile& file = files.emplace_back();
        std::wstring reason;
        const Reading* missed = entry.is_object() ? member(entry, "missed") : nullptr;
        if (missed == nullptr || !missed->is_boolean() || !readText(entry, "place", file.place) ||
            !readText(entry, "reason", reason)) {
            return false;
        }
        file.reason = ut::encodeUtf8(reason);
        file.isStranger = !missed->get<bool>();
    }
    return list == nullptr || list->is_array();
}

}  // namespace

std::string manifestJson(const BundleManifest& manifest, bool inLines) {
    Writing json;
    json["schema"] = schema;
    json["made_by"] = ut::encodeUtf8(manifest.madeBy);
    json["date"] = ut::encodeUtf8(manifest.date);
    json["folders"] = Writing::array();
    for (const std::wstring& folder : manifest.folders) {
        json["folders"].push_back(ut::encodeUtf8(folder));
    }
    json["files"] = Writing::array();
    for (const BundledFile& file : manifest.files) {
        json["files"].push_back(fileJson(file));
    }
    json["left_out"] = Writing::array();
    for (const LeftOutFile& file : manifest.leftOut) {
        Writing entry;
        entry["place"] = ut::encodeUtf8(file.place);
        entry["reason"] = file.reason;
        entry["missed"] = !file.isStranger;
        json["left_out"].push_back(std::move(entry));
    }
    return json.dump(inLines ? 1 : -1, ' ', false, Writing::error_handler_t::replace) +
           (inLines ? "\n" : "");
}

EditResult readManifest(std::string_view json, BundleManifest& manifest) {
    manifest = {};
    DepthGuard guard;
    if (!Reading::sax_parse(json, &guard)) {
        return refuseManifest("it is no JSON, or nested too deep");
    }
    const Reading root = Reading::parse(json, nullptr, false);
    std::wstring word;
    if (!root.is_object() || !readText(root, "schema", word) || ut::encodeUtf8(word) != schema) {
        return refuseManifest("its schema is not platen.bundle/1, which this program reads");
    }
    const Reading* files = member(root, "files");
    if (files == nullptr || !files->is_array() || !readText(root, "made_by", manifest.madeBy) ||
        !readText(root, "date", manifest.date) || !readFolders(root, manifest.folders) ||
        !readLeftOut(root, manifest.leftOut)) {
        return refuseManifest("it does not say what it should");
    }
    if (const std::string fault = readFiles(*files, manifest); !fault.empty()) {
        return refuseManifest(fault);
    }
    return {};
}

}  // namespace platen
