// edit_by_path FILE PATH VALUE: gives an item of any plotter file another value, and leaves all
// others as they are.
#include <platen/edit.h>
#include <platen/utcore.h>

#include <iostream>

int main(int count, char** arguments) {
    if (count != 4) {
        return 2;
    }
    const std::wstring path = ut::decodePath(arguments[1]);
    platen::SourceFile file;
    if (!file.read(path)) {
        std::cerr << file.input().report().failure()->describe() << '\n';
        return 1;
    }
    platen::ItemEditor editor(*file.input().root());
    const platen::EditResult done =
        editor.set(ut::decodePath(arguments[2]), ut::decodePath(arguments[3]));
    if (!done) {
        std::cerr << done->reason << '\n';
        return 1;
    }
    // Read back before the old file is given up. Somebody else's changes since are not overwritten.
    const platen::WriteResult written = file.write(path);
    for (const PiaFinding& loss : written.report.warnings()) {
        std::cerr << loss.describe() << '\n';
    }
    return written ? 0 : 1;
}
