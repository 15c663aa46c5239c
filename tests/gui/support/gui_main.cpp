// Runs the tests of the GUI inside an application, with an event loop that tests and modal dialogs
// turn. Needs a display; ./test starts one.
#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/image.h>
#include <wx/init.h>

#include <cstdio>

namespace {

class TestApplication : public wxApp {
public:
    bool OnInit() override {
        SetExitOnFrameDelete(false);
        wxInitAllImageHandlers();
        return true;
    }

    int OnRun() override {
        wxEventLoop loop;
        const wxEventLoopActivator active(&loop);
        return RUN_ALL_TESTS();
    }

    /// A failed check of wxWidgets is a fault of the code that is tested.
    void OnAssertFailure(const wxChar* file, int line, const wxChar* function,
                         const wxChar* condition, const wxChar* message) override {
        ADD_FAILURE() << wxString(file) << ":" << line << ": " << wxString(function) << ": "
                      << wxString(condition) << ": " << wxString(message);
    }
};

}  // namespace

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (testing::GTEST_FLAG(list_tests)) {
        // Tests are listed where there is no display.
        return RUN_ALL_TESTS();
    }
    wxApp::SetInstance(new TestApplication);
    if (!wxEntryStart(count, arguments) || !wxTheApp->CallOnInit()) {
        std::fputs(
            "error: the tests of the GUI need a display; ./test and "
            "scripts/with-display start one\n",
            stderr);
        return 1;
    }
    const int result = wxTheApp->OnRun();
    wxTheApp->OnExit();
    wxEntryCleanup();
    return result;
}
