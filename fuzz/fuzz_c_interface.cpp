// Calls of the C interface in any order, with any texts. A change that fails changes nothing, and
// what a document gives can be opened again.
//
// Slow: each change encodes the document and reads it again, as the interface promises, and a table
// by colour has 255 styles; one document in 16 is made one.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include <platen/platen.h>
#include "fuzz/oracle.h"
#include "tests/support/trees.h"

namespace {

struct Destroy {
    void operator()(platen_context* context) const { platen_context_destroy(context); }
    void operator()(platen_document* document) const { platen_document_destroy(document); }
};
using Context = std::unique_ptr<platen_context, Destroy>;
using Document = std::unique_ptr<platen_document, Destroy>;

std::string taken(platen_buffer* buffer) {
    std::string bytes(platen_buffer_data(buffer), platen_buffer_size(buffer));
    platen_buffer_destroy(buffer);
    return bytes;
}

/// Takes the input apart: a byte for a choice, a text up to its line feed.
class Script {
public:
    explicit Script(std::string_view input) : rest_(input) {}

    bool ended() const { return rest_.empty(); }
    unsigned choice() {
        const unsigned byte = rest_.empty() ? 0 : static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(std::min<std::size_t>(1, rest_.size()));
        return byte;
    }
    std::string text() {
        const std::size_t end = std::min(rest_.find('\n'), rest_.size());
        std::string text(rest_.substr(0, end));
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        return text;
    }

private:
    std::string_view rest_;
};

class Session {
public:
    void run(Script script) {
        constexpr int mostCalls = 12;
        for (int call = 0; call < mostCalls && !script.ended(); ++call) {
            Document& document = documents_[script.choice() % documents_.size()];
            if (!document || script.choice() % 16 == 0) {
                document = make(script);
                continue;
            }
            const std::string before = bytesOf(document);
            const bool done = change(*document, documents_[0].get(), script);
            require(platen_context_error(context_.get()) != nullptr);
            const std::string after = bytesOf(document);
            require(done || before == after);
            if (done) {
                const Document again(platen_document_open_bytes(context_.get(), after.data(),
                                                                after.size(), nullptr));
                require(again != nullptr && bytesOf(again) == after);
            }
        }
        if (documents_[0]) {
            look(*documents_[0]);
        }
    }

private:
    static std::string bytesOf(const Document& document) {
        return taken(platen_document_bytes(document.get()));
    }

    Document make(Script& script) {
        const unsigned choice = script.choice();
        const unsigned kind = 1 + choice % 5;
        if (choice / 16 == 15) {
            return Document(platen_document_create_table(context_.get(), "ctb", nullptr));
        }
        if (kind == 1) {
            return Document(
                platen_document_create_table(context_.get(), "stb", script.text().c_str()));
        }
        if (kind == 2) {
            return Document(platen_document_create_configuration(context_.get(), "Print As PDF"));
        }
        std::string body = script.text();
        std::ranges::replace(body, '|', '\n');
        const std::string bytes = kind == 3 ? body : fileAround(body);
        if (kind == 5) {
            return Document(platen_repair(context_.get(), bytes.data(), bytes.size(), nullptr,
                                          static_cast<int>(script.choice() % 2), nullptr));
        }
        return Document(
            platen_document_open_bytes(context_.get(), bytes.data(), bytes.size(), nullptr));
    }

    static void look(platen_document& document) {
        for (platen_buffer* (*const show)(platen_document*) :
             {platen_document_info, platen_document_findings, platen_document_items}) {
            require(!taken(show(&document)).empty());
        }
    }

    static bool change(platen_document& document, platen_document* other, Script& script) {
        const unsigned call = script.choice() % 13;
        const std::string one = script.text();
        const std::string two = script.text();
        switch (call) {
            case 0:
                return platen_document_set(&document, one.c_str(), two.c_str()) != 0;
            case 1:
                return platen_document_set(&document, one.c_str(), nullptr) != 0;
            case 2:
                return platen_document_remove(&document, one.c_str()) != 0;
            case 3:
                return platen_style_set(&document, one.c_str(), two.c_str()) != 0;
            case 4:
                return platen_style_add(&document, one.c_str(),
                                        two.empty() ? nullptr : two.c_str()) != 0;
            case 5:
                return platen_style_remove(&document, one.c_str()) != 0;
            case 6:
                return platen_style_rename(&document, one.c_str(), two.c_str()) != 0;
            case 7:
                return platen_style_copy(&document, one.c_str(), two.c_str()) != 0;
            case 8:
                return !taken(platen_styles_merge_equal(&document)).empty();
            case 9:
                return platen_lineweight_set(&document, script.choice(), one.c_str()) != 0;
            case 10:
                return platen_table_read_csv(&document, one.data(), one.size()) != 0;
            case 11: {
                const std::string changes = taken(platen_compare(&document, other));
                return !taken(platen_apply(&document, changes.c_str())).empty();
            }
            default:
                taken(platen_chart(&document, nullptr, one.c_str()));
                platen_document_destroy(
                    platen_document_convert(&document, two.c_str(), one.c_str(), nullptr));
                return false;
        }
    }

    Context context_{platen_context_create()};
    std::array<Document, 3> documents_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Session().run(Script({reinterpret_cast<const char*>(data), size}));
    return 0;
}
