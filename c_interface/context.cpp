#include <array>
#include <new>

#include <platen/utcore.h>
#include "c_interface/handles.h"

namespace platen::c {
namespace {

/// The stable word of a refusal, in the order of `EditFault`.
constexpr std::array<const char*, 15> faultWords{
    "file-unreadable",    "file-unwritable", "wrong-kind",   "stands-for-default-printer",
    "parameters-missing", "file-of-others",  "not-found",    "block-not-found",
    "type-missing",       "ambiguous",       "name-invalid", "name-taken",
    "type-kept",          "value-invalid",   "size-invalid"};
static_assert(faultWords.size() == static_cast<std::size_t>(EditFault::SizeInvalid) + 1);

Json errorJson(std::string_view code, std::string_view message) {
    Json json;
    json["schema"] = "platen.error/1";
    json["code"] = code;
    json["message"] = message;
    return json;
}

std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

void State::note(const Json& json) { error_ = dump(json); }

void State::fail(std::string_view code, std::string_view message) noexcept {
    guarded(
        [&] {
            note(errorJson(code, message));
            return true;
        },
        [&](const char*, const char*) { error_.clear(); });
}

void State::fail(const PiaReport& report) {
    const PiaFinding finding = report.failure().value_or(PiaFinding{});
    Json json = errorJson(piaCodeWord(finding.code), finding.describe());
    json["remedy"] = piaCodeRemedy(finding.code);
    if (!finding.path.empty()) {
        json["place"] = ut::encodeUtf8(finding.path);
    }
    note(json);
}

void State::fail(const WriteResult& result) { fail(result.report); }

bool State::accept(const EditResult& done) {
    if (done) {
        return true;
    }
    Json json = errorJson(faultWords.at(static_cast<std::size_t>(done->fault)), done->reason);
    if (!done->wanted.empty()) {
        json["wanted"] = ut::encodeUtf8(done->wanted);
    }
    if (!done->present.empty()) {
        json["present"] = Json::array();
        for (const std::wstring& name : done->present) {
            json["present"].push_back(ut::encodeUtf8(name));
        }
    }
    note(json);
    return false;
}

std::optional<std::wstring> State::text(const char* text, const char* what) {
    if (text == nullptr) {
        fail("argument-missing", std::string(what) + " is NULL");
        return std::nullopt;
    }
    return textOrNone(text, what);
}

std::optional<std::wstring> State::textOrNone(const char* text, const char* what) {
    std::wstring wide;
    if (text == nullptr || ut::decodeUtf8(text, wide)) {
        return wide;
    }
    fail("argument-not-utf-8", std::string(what) + " is not UTF-8");
    return std::nullopt;
}

platen_buffer* bufferOf(std::string bytes) { return new platen_buffer{std::move(bytes)}; }

Json jsonOf(const std::vector<std::string>& lines) {
    Json json = Json::array();
    for (const std::string& line : lines) {
        json.push_back(line);
    }
    return json;
}

platen_buffer* bufferOf(const Json& json) { return bufferOf(dump(json)); }

}  // namespace platen::c

using namespace platen::c;

const char* platen_version(void) { return PLATEN_VERSION; }

uint32_t platen_interface_version(void) { return PLATEN_INTERFACE_VERSION; }

platen_context* platen_context_create(void) {
    return guarded([] { return new platen_context{std::make_shared<State>()}; },
                   [](const char*, const char*) {});
}

void platen_context_destroy(platen_context* context) { delete context; }

const char* platen_context_error(const platen_context* context) {
    return context == nullptr ? "" : context->state->error();
}

void platen_context_set_max_body(platen_context* context, uint64_t bytes) {
    if (context != nullptr) {
        context->state->maxBody = bytes;
    }
}

const char* platen_buffer_data(const platen_buffer* buffer) {
    return buffer == nullptr ? "" : buffer->bytes.c_str();
}

size_t platen_buffer_size(const platen_buffer* buffer) {
    return buffer == nullptr ? 0 : buffer->bytes.size();
}

void platen_buffer_destroy(platen_buffer* buffer) { delete buffer; }
