#include <gmock/gmock.h>
#include <wx/dirdlg.h>
#include <wx/frame.h>
#include <wx/platinfo.h>
#include <wx/stdpaths.h>
#include <wx/timer.h>
#include <wx/translation.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "gui_look.h"
#include "tests/gui_boxes.h"
#include "tests/support/gui.h"
#include "utcore.h"

namespace {

using testing::ElementsAre;
using Box = BoxCatcher::Box;

class Messages : public testing::Test {
protected:
    void SetUp() override {
        frame_.Show();
        settle();
        // The window manager decides when it is there.
        wxMilliSleep(300);
        settle();
    }
    void TearDown() override { ut::Config::setRegProduct(L""); }

    wxFrame frame_{nullptr, wxID_ANY, "Messages"};
};

TEST_F(Messages, HaveTheProductForACaption) {
    const std::wstring text = L"100% %s \u0416 \"x\"\nsecond line";
    {
        const BoxCatcher catcher;
        wut::errorBox(text.c_str());
        EXPECT_THAT(catcher.boxes, ElementsAre(Box{text, L"Platen", 517, &frame_}));
    }
    ut::Config::setRegProduct(L"Pl\u00E4ne 7");
    constexpr int question = wxYES_NO | wxICON_QUESTION;
    const BoxCatcher catcher(wxID_NO);
    EXPECT_EQ(wut::messageBox(text.c_str(), nullptr, question, &frame_, -1, -1), wxNO);
    EXPECT_EQ(wut::messageBox(L"", L"", wxYES_NO | wxICON_WARNING, nullptr, 5, 5), wxNO);
    EXPECT_EQ(wut::messageBox(L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame_, -1, -1), wxNO);
    EXPECT_THAT(catcher.boxes,
                ElementsAre(Box{text, L"Pl\u00E4ne 7", question, &frame_},
                            Box{L"", L"Pl\u00E4ne 7", wxYES_NO | wxICON_WARNING, &frame_},
                            Box{L"Replace?", L"Plot", question | wxNO_DEFAULT, &frame_}));
}

TEST_F(Messages, OfPoliciesAreErrors) {
    const BoxCatcher catcher;
    const wut::BasePolicy plain;
    EXPECT_EQ(plain.errorMessage(), L"Bad input");
    plain.showError();
    const wut::BasePolicy copies("Copies: 1 to 99");
    copies.showError(&frame_);
    EXPECT_THAT(catcher.boxes, ElementsAre(Box{L"Bad input", L"Platen", 517, &frame_},
                                           Box{L"Copies: 1 to 99", L"Platen", 517, &frame_}));
}

/// What the whole display shows, with what its window manager adds: the X window dump that
/// scripts/display.sh tells the place of.
wxImage display() {
    wxString path;
    wxGetEnv("PLATEN_TEST_SCREEN", &path);
    if (wxPlatformInfo::Get().GetOperatingSystemId() & wxOS_WINDOWS) {
        path = "Z:" + path;
    }
    ut::ByteBuffer dump;
    bool tooLarge = false;
    EXPECT_FALSE(ut::readFile(path.ToStdWstring(), 1 << 28, dump, tooLarge)) << path;
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(dump.view().at(at)); };
    const auto field = [&](std::size_t index) {
        std::size_t value = 0;
        for (std::size_t at = index * 4; at < index * 4 + 4; ++at) {
            value = value << 8 | byte(at);
        }
        return value;
    };
    const std::size_t width = field(4);
    const std::size_t height = field(5);
    const std::size_t lineLength = field(12);
    // The header, and twelve bytes for each colour of a palette.
    const std::size_t start = field(0) + field(19) * 12;
    wxImage image(static_cast<int>(width), static_cast<int>(height));
    unsigned char* target = image.GetData();
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            const std::size_t pixel = start + y * lineLength + x * 4;
            for (const std::size_t channel : {2, 1, 0}) {
                *target++ = byte(pixel + channel);
            }
        }
    }
    return image;
}

/// The smallest rectangle with everything that differs.
wxRect difference(const wxImage& one, const wxImage& other) {
    wxRect changed;
    for (int y = 0; y < one.GetHeight(); ++y) {
        for (int x = 0; x < one.GetWidth(); ++x) {
            const auto at = static_cast<std::size_t>(y * one.GetWidth() + x) * 3;
            if (!std::equal(one.GetData() + at, one.GetData() + at + 3, other.GetData() + at)) {
                changed.Union(wxRect(x, y, 1, 1));
            }
        }
    }
    return changed;
}

/// Waits within a modal box until it is drawn, keeps its picture, and presses Return.
class Watcher : public wxTimer {
public:
    Watcher() { Start(100); }

    void Notify() override {
        const wxImage now = display();
        const wxRect changed = difference(before_, now);
        if (changed.IsEmpty() || !difference(last_, now).IsEmpty()) {
            last_ = now;
            return;
        }
        if (!picture.IsOk()) {
            picture = now.GetSubImage(changed);
        }
        wxUIActionSimulator user;
        user.MouseMove(changed.GetPosition() + changed.GetSize() / 2);
        user.Char(WXK_RETURN);
    }

    wxImage picture;

private:
    wxImage before_ = display();
    wxImage last_ = before_;
};

TEST_F(Messages, AreShown) {
    Watcher watcher;
    EXPECT_EQ(wut::messageBox(L"The device \"Print As PDF\" is not installed.\n"
                              L"Choose another one, or install it.",
                              nullptr, wxOK | wxICON_ERROR | wxCENTRE, nullptr, -1, -1),
              wxOK);
    ASSERT_TRUE(watcher.picture.IsOk());
    leavePicture("error_box", watcher.picture);
}

/// A catalogue of one message, as compilers of translations write it.
std::string catalogue(const std::string& original, const std::string& translated) {
    const std::string header = "Content-Type: text/plain; charset=UTF-8\n";
    std::string file;
    const auto number = [&file](std::size_t value) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            file += static_cast<char>(value >> shift & 0xFF);
        }
    };
    constexpr std::size_t tables = 28;
    constexpr std::size_t texts = tables + 2 * 16;
    for (const std::size_t value : {std::size_t{0x950412DE}, std::size_t{0}, std::size_t{2}, tables,
                                    tables + 16, std::size_t{0}, texts}) {
        number(value);
    }
    std::string pool;
    for (const std::string& text : {std::string(), original, header, translated}) {
        number(text.size());
        number(texts + pool.size());
        pool += text + '\0';
    }
    return file + pool;
}

class OneMessage : public wxTranslationsLoader {
public:
    wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString&) override {
        const std::string file = catalogue("Select Folder", "Ordner w\xC3\xA4hlen");
        return wxMsgCatalog::CreateFromData(
            wxScopedCharBuffer::CreateNonOwned(file.data(), file.size()), domain);
    }
    wxArrayString GetAvailableTranslations(const wxString&) const override {
        return wxArrayString(1, {wxString("de")});
    }
};

/// Turns down a folder chooser, and keeps its title.
class FolderRefuser : public wxModalDialogHook {
public:
    FolderRefuser() { Register(); }
    ~FolderRefuser() override { Unregister(); }

    wxString title;

protected:
    int Enter(wxDialog* dialog) override {
        const auto* chooser = dynamic_cast<wxDirDialog*>(dialog);
        title = chooser == nullptr ? wxString("no folder chooser") : chooser->GetMessage();
        return wxID_CANCEL;
    }
};

TEST_F(Messages, AskForAFolder) {
    const wxString before = wxStandardPaths::Get().GetTempDir();
    wxString folder = before;
    {
        Watcher watcher;
        EXPECT_TRUE(wut::selectFolderDlg(folder, &frame_));
        EXPECT_EQ(folder, before);
        ASSERT_TRUE(watcher.picture.IsOk());
        leavePicture("folder_chooser", watcher.picture);
    }
    auto* translations = new wxTranslations;
    wxTranslations::Set(translations);
    translations->SetLoader(new OneMessage);
    translations->SetLanguage("de");
    ASSERT_TRUE(translations->AddCatalog("application"));
    const FolderRefuser refuser;
    EXPECT_FALSE(wut::selectFolderDlg(folder, &frame_));
    wxTranslations::Set(nullptr);
    EXPECT_EQ(refuser.title, L"Ordner w\u00E4hlen");
    EXPECT_EQ(folder, before);
}

}  // namespace
