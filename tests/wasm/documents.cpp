// Reads and writes documents: documents OUT FILE... leaves in the folder OUT what a system makes of
// the files, and documents of its own making. Another system must leave the same, byte for byte.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <platen/inspect.h>
#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/plotstyle.h>
#include <platen/pmp.h>
#include <platen/utcore.h>

namespace {

std::wstring out;
bool complete = true;

std::wstring place(const std::wstring& name) { return ut::joinPath(out, name); }

/// What cannot be written is told apart by its absence.
template <class Document>
void write(std::unique_ptr<Document> document, const std::wstring& name) {
    if (document) {
        (void)document->write(place(name).c_str());
    }
}

void put(const std::string& text, const std::wstring& name) {
    const std::string_view pieces[] = {text};
    complete = !ut::replaceFile(place(name), pieces) && complete;
}

/// The item tree, and each kind of document that the file can be taken for. A sample may be the
/// body of a file alone.
void rewrite(const std::wstring& path, const std::wstring& name) {
    ut::ByteBuffer bytes;
    bool tooLarge = false;
    constexpr std::uint64_t limit = 1 << 20;
    complete = !ut::readFile(path, limit, bytes, tooLarge) && complete;
    PiaInput input;
    const bool isFile = input.openBytes(bytes.view());
    if (isFile || input.openBody(bytes.view())) {
        PiaFileOut file;
        (void)file.write(input.root(), place(name + (isFile ? L".tree" : L".body")).c_str());
    }
    put(platen::checkJson("sample", platen::checkBytes(bytes.view(), path)), name + L".check");
    write(std::unique_ptr<CPlotStyleTable>(CPlotStyleTable::read(path.c_str())), name + L".ctb");
    bool printerChanged = false;
    write(std::unique_ptr<CPlotCfg3>(CPlotCfg3::read(path.c_str(), printerChanged)),
          name + L".pc3");
    write(std::unique_ptr<PlotModelParam>(PlotModelParam::read(path.c_str(), OdArray<OdString>())),
          name + L".pmp");
}

void make() {
    std::unique_ptr<CPlotStyleTable> pens(
        CPlotStyleTable::create(true, L"Pens of the \u00e9tage, 5 \u20ac"));
    pens->style(6)->setScreen(42);
    write(std::move(pens), L"pens.ctb");
    write(std::unique_ptr<CPlotCfg3>(CPlotCfg3::create(BuiltInPlotDevice::pdfName)), L"pdf.pc3");
    for (const wchar_t* name : {L"pens.ctb", L"pdf.pc3"}) {
        rewrite(place(name), std::wstring(L"again-") + name);
    }
    for (const char* page : {"WINDOWS-1251", "CP1257", "utf-8", "CP874"}) {
        const bool known = ut::setAnsiCodePage(page);
        std::wstring shown = ut::decodeAnsi("\x80\x98\xc4\xe5\xff");
        shown += known ? L'+' : L'-';
        put(ut::encodeUtf8(shown), ut::decodePath(page));
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        return 2;
    }
    out = ut::decodePath(arguments[1]);
    for (int index = 2; index < count; ++index) {
        rewrite(ut::decodePath(arguments[index]), std::to_wstring(index));
    }
    make();
    std::puts(complete ? "complete" : "not all was written");
    return complete ? 0 : 1;
}
