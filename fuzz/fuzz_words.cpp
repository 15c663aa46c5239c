// What people type for the command: paths of items, selections of styles, settings, sizes. Each
// line is a letter for what it is, and the text.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <platen/edit.h>
#include <platen/style_words.h>
#include "fuzz/oracle.h"
#include "tests/support/trees.h"
#include "tools/platen/arguments/paper_sizes.h"
#include "tools/platen/arguments/suggest.h"

namespace {

constexpr std::string_view tableBody = R"(description="
aci_table_available=FALSE
scale_factor=1.000000
apply_factor=FALSE
custom_lineweight_display_units=0
plot_style{
 0{
  name="Normal
  localized_name="Normal
  description="
  color=-1
  mode_color=-1
  color_policy=5
  physical_pen_number=0
  virtual_pen_number=0
  screen=100
  linepattern_size=0.500000
  linetype=31
  adaptive_linetype=TRUE
  lineweight=0
  fill_style=73
  end_style=4
  join_style=5
 }
 1{
  name="Wall 1-3
  localized_name="Wall 1-3
  description="a/b
  color=-1006698496
  mode_color=-1023410177
  color_policy=1
  physical_pen_number=7
  virtual_pen_number=255
  screen=50
  linepattern_size=0.500000
  linetype=31
  adaptive_linetype=FALSE
  lineweight=1
  fill_style=73
  end_style=4
  join_style=5
 }
}
custom_lineweight_table{
 0=0.000000
 1=0.350000
}
)";

constexpr std::string_view itemsBody = R"(description="x
n=1
a{
 a/b="x
 a{
  b:str=7
  c=\0A\
 }
}
)";

/// The other 25 line weights are added, so that the text above stays short.
const std::string& wholeBody() {
    static const std::string body = [] {
        std::string text(tableBody);
        std::string weights;
        for (int index = 2; index < 27; ++index) {
            weights += ' ' + std::to_string(index) + "=0.250000\n";
        }
        return text.insert(text.rfind('}'), weights);
    }();
    return body;
}

class Session {
public:
    void take(char what, const std::wstring& text) {
        if (what == 'e') {
            editItems(text);
        } else if (what == 'p') {
            paper(ut::encodeUtf8(text));
        } else if (what == 'x') {
            suggest(text);
        } else {
            open();
            editTable(what, text);
        }
    }

    /// A table is still one, however it was edited.
    void finish() {
        PiaTree tree;
        if (!changed_ || !editor_.writeTo(tree.root())) {
            return;
        }
        std::string body;
        PiaReport report;
        if (!piaWriteBody(tree.root(), body, report) || report.warningCount() > 0) {
            return;
        }
        PiaInput input;
        require(input.openBody(body));
        require(platen::documentState(input).fault.empty());
    }

private:
    void open() {
        if (opened_) {
            return;
        }
        opened_ = true;
        ut::ByteBuffer bytes;
        bytes.reserve(wholeBody().size());
        std::copy(wholeBody().begin(), wholeBody().end(), bytes.data());
        bytes.setSize(wholeBody().size());
        require(file_.readBytes(std::move(bytes)) && editor_.open());
    }

    void editTable(char what, const std::wstring& text) {
        switch (what) {
            case 's':
                select(text);
                break;
            case 't':
                change(editor_.set(places_, text));
                break;
            case 'w':
                change(editor_.setLineWeight(places_.size(), text));
                break;
            case 'n':
                change(editor_.add(text));
                break;
            case 'r':
                change(editor_.rename(places_.empty() ? 0 : places_.front(), text));
                break;
            default:
                change(editor_.remove(places_));
                places_.clear();
        }
    }

    void change(const platen::EditResult& result) {
        said(result);
        changed_ = changed_ || result;
    }

    /// A refusal says why, on one line, and changes nothing.
    static void said(const platen::EditResult& result) {
        require(result || (!result->reason.empty() && ut::isUtf8(result->reason)));
    }

    void select(const std::wstring& text) {
        std::vector<std::size_t> places;
        const platen::EditResult result = editor_.select(text, places);
        said(result);
        if (result) {
            require(!places.empty());
            for (std::size_t at = 0; at < places.size(); ++at) {
                require(places[at] < editor_.table().size());
                require(at == 0 || places[at - 1] < places[at]);
            }
            places_ = places;
        }
    }

    void editItems(const std::wstring& text) {
        PiaInput input;
        require(input.openBody(itemsBody));
        PiaBlock& root = *input.root();
        const std::string before = piaBodyText(root);
        const auto check = [&](const platen::EditResult& done, const platen::ItemEditor& editor,
                               const std::string& was) {
            said(done);
            require(done || piaBodyText(root) == was);
            require(editor.changed() || piaBodyText(root) == before);
        };
        platen::ItemEditor editor(root);
        const std::size_t end = text.find(L'=');
        const std::wstring path = text.substr(0, end);
        for (const PiaItem* item : piaFindItems(root, path)) {
            require(item != nullptr);
        }
        check(editor.assign(text), editor, before);
        std::string was = piaBodyText(root);
        if (end != std::wstring::npos) {
            check(editor.set(path, text.substr(end + 1)), editor, was);
            was = piaBodyText(root);
        }
        check(editor.addBlock(path), editor, was);
        was = piaBodyText(root);
        check(editor.remove(path), editor, was);
    }

    static void paper(const std::string& text) {
        (void)cli::arguments::paperSize(text);
        (void)cli::arguments::paperMargins(text);
        (void)cli::arguments::paperUnits(text);
        const std::optional<double> number = platen::wholeNumber(text);
        require(!number || platen::wholeNumber(platen::numberInWords(*number)) == number);
    }

    void suggest(const std::wstring& text) {
        static const std::vector<std::wstring> names{L"lineweight", L"screening", L"color",
                                                     L"Wall 1-3", L""};
        require(cli::arguments::nearNames(text, names).size() <= names.size());
        require(ut::isUtf8(cli::arguments::suggestion(text, names)));
    }

    platen::SourceFile file_;
    platen::TableEditor editor_{file_};
    std::vector<std::size_t> places_;
    bool opened_ = false;
    bool changed_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    Session session;
    constexpr int mostLines = 12;
    for (int line = 0; line < mostLines && !rest.empty(); ++line) {
        const std::string_view text = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(text.size() + 1, rest.size()));
        if (!text.empty()) {
            session.take(text.front(), ut::decodePath(text.substr(1)));
        }
    }
    session.finish();
    return 0;
}
