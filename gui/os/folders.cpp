#include <wx/confbase.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <platen/gui_os.h>

namespace wut {

namespace {

/// The shell's numbers, which its headers call CSIDL_*; other systems have no such headers.
enum ShellFolder {
    shellDesktop = 0,
    shellPersonal = 5,
    shellFavorites = 6,
    shellRecent = 8,
    shellDrives = 17,
    shellNetwork = 18,
};

/// Makes a group current while it lives.
class GroupScope {
public:
    GroupScope(wxConfigBase& config, const wxString& group)
        : config_(config), before_(config.GetPath()) {
        config_.SetPath(group);
    }
    GroupScope(const GroupScope&) = delete;
    GroupScope& operator=(const GroupScope&) = delete;
    ~GroupScope() { config_.SetPath(before_); }

private:
    wxConfigBase& config_;
    wxString before_;
};

struct SavedFile {
    unsigned long number;
    wxString entry;
    wxString path;
};

/// The number of an entry "file<number>".
bool isFileEntry(const wxString& entry, unsigned long& number) {
    wxString digits;
    return entry.StartsWith("file", &digits) && !digits.empty() &&
           std::all_of(digits.begin(), digits.end(),
                       [](wxUniChar digit) { return digit >= '0' && digit <= '9'; }) &&
           digits.ToULong(&number);
}

std::vector<SavedFile> savedFiles(const wxConfigBase& config) {
    std::vector<SavedFile> files;
    wxString entry;
    long cookie = 0;
    for (bool more = config.GetFirstEntry(entry, cookie); more;
         more = config.GetNextEntry(entry, cookie)) {
        SavedFile file{0, entry, {}};
        if (isFileEntry(entry, file.number) && config.Read(entry, &file.path)) {
            files.push_back(std::move(file));
        }
    }
    std::ranges::stable_sort(files, {}, &SavedFile::number);
    return files;
}

wxString entryName(std::size_t index) { return wxString("file") << index + 1; }

}  // namespace

int placesBarFolderCSIDLByIndex(int index) {
    switch (index) {
        case PBF_Desktop:
            return shellDesktop;
        case PBF_Personal:
            return shellPersonal;
        case PBF_Favorites:
            return shellFavorites;
        case PBF_Network:
            return shellNetwork;
        case PBF_Recent:
            return shellRecent;
        default:
            return shellDrives;
    }
}

bool areIdenticalFolders(const OdString& left, const OdString& right) {
    return ut::FileName(left.c_str()) == ut::FileName(right.c_str());
}

OdArray<OdString> restoreCorrectFileListFromWxFileConfigGroup(wxConfigBase& config,
                                                              const OdString& group) {
    OdArray<OdString> correct;
    if (!config.HasGroup(group.text())) {
        // Going there would make it.
        return correct;
    }
    const GroupScope scope(config, group.text());
    const std::vector<SavedFile> saved = savedFiles(config);
    std::vector<ut::FileName> kept;
    for (const SavedFile& file : saved) {
        const ut::FileName name(file.path.ToStdWstring());
        if (name.exists() && std::ranges::find(kept, name) == kept.end()) {
            kept.push_back(name);
            correct.append(OdString(file.path.ToStdWstring()));
        }
    }

    for (const SavedFile& file : saved) {
        if (file.number == 0 || file.number > correct.size() ||
            file.entry != entryName(file.number - 1)) {
            config.DeleteEntry(file.entry, false);
        }
    }
    for (std::size_t i = 0; i < correct.size(); ++i) {
        const wxString path = std::as_const(correct)[i].text();
        if (config.Read(entryName(i)) != path) {
            config.Write(entryName(i), path);
        }
    }
    return correct;
}

}  // namespace wut
