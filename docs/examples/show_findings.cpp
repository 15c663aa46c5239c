// show_findings FILE...: what is wrong with plotter files, and what to do about it.
#include <platen/inspect.h>
#include <platen/utcore.h>

#include <iostream>

int main(int count, char** arguments) {
    int status = 0;
    for (int i = 1; i < count; ++i) {
        const platen::CheckResult result = platen::check(ut::decodePath(arguments[i]));
        std::cout << arguments[i] << ": "
                  << (result.kind ? platen::kindName(*result.kind) : "no plotter file") << '\n';
        for (const platen::Finding& finding : result.findings) {
            // The code stays the same from release to release; the words may not.
            std::cout << "  " << piaCodeWord(finding.code) << '\n'
                      << "    where: " << ut::encodeUtf8(finding.path) << '\n'
                      << "    do:    " << finding.remedy << '\n';
        }
        if (result.verdict == platen::Verdict::Errors) {
            status = 1;
        }
    }
    return status;
}
