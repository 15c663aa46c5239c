/// What stands behind the handles of the C interface, and how its functions fail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/edit.h>
#include <platen/inspect.h>
#include <platen/platen.h>
#include "guard.h"

namespace platen::c {

using Json = nlohmann::ordered_json;

/// What a context and all that came from it share.
class State {
public:
    /// Notes why a call fails. `code` and `message` are UTF-8.
    void fail(std::string_view code, std::string_view message) noexcept;
    void fail(const PiaReport& report);
    void fail(const WriteResult& result);
    /// True when the change was made; otherwise notes why not.
    bool accept(const EditResult& done);

    /// A text of the caller's; nothing, after a failure, for NULL and for what is not UTF-8.
    std::optional<std::wstring> text(const char* text, const char* what);
    /// NULL is empty.
    std::optional<std::wstring> textOrNone(const char* text, const char* what);

    const char* error() const { return error_.c_str(); }
    PiaReadOptions reading() const { return readingUpTo(maxBody); }

    std::uint64_t maxBody = PiaLimits{}.bodyBytes;

private:
    void note(const Json& json);

    std::string error_;
};

using SharedState = std::shared_ptr<State>;

/// Bytes of the caller's.
inline std::string_view viewOf(const void* bytes, std::size_t size) {
    return bytes == nullptr ? std::string_view()
                            : std::string_view(static_cast<const char*>(bytes), size);
}

platen_buffer* bufferOf(std::string bytes);
/// A file's text need not be UTF-8, JSON must be.
platen_buffer* bufferOf(const Json& json);

}  // namespace platen::c

struct platen_buffer {
    std::string bytes;
};

struct platen_context {
    platen::c::SharedState state;
};

struct platen_document {
    platen::c::SharedState state;
    /// Where it is from; empty when it is from nowhere.
    std::wstring path{};
    /// The file at `path` as it was read or saved.
    platen::FileMark mark{};
    platen::SourceFile source{};
    /// The bytes that were read or saved last.
    std::size_t savedHash = 0;

    /// Reads a file's bytes, and notes why it cannot.
    bool read(std::string_view bytes);
    /// Becomes what these items are as a file. A failure leaves it as it was.
    bool become(const PiaBlock& root, platen::FileForm form, PiaKind kind);
    /// Reads again what was read last, when the tree was changed in vain.
    void reset();
    /// These bytes are what the file is.
    void rememberSavedAs(std::string_view bytes);
    /// The path for people, UTF-8.
    std::string name() const;
};

namespace platen::c {

/// Does `work` with a handle that may be NULL; nothing of its type when it fails.
template <class Handle, class Work>
auto with(Handle* handle, Work&& work) noexcept -> decltype(work(*handle)) {
    if (handle == nullptr) {
        return {};
    }
    return guarded(
        [&] { return work(*handle); },
        [&](const char* code, const char* message) { handle->state->fail(code, message); });
}

Json jsonOf(const std::vector<std::string>& lines);

/// A document of these items; null after a failure.
std::unique_ptr<platen_document> documentOf(const SharedState& state, const PiaBlock& root,
                                            FileForm form, PiaKind kind);

}  // namespace platen::c
