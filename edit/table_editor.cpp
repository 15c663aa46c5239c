#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <tuple>

#include <platen/edit_styles.h>
#include <platen/inspect.h>
#include <platen/utcore.h>
#include "edit/refusal.h"
#include "edit/style_names.h"
#include "edit/table_tree.h"
#include "plotstyle/style_settings.h"

namespace platen {
namespace {

std::size_t placeOf(const CPlotStyleTable& table, const CPlotStyle* style) {
    std::size_t place = 0;
    while (place < table.size() && table.style(place) != style) {
        ++place;
    }
    return place;
}

}  // namespace

EditResult TableEditor::open() {
    Content content = recognise(file_.input());
    if (!content.table) {
        return refuse(EditFault::WrongKind,
                      content.rejected
                          ? "this is no valid plot style table: " +
                                file_.input().report().failure().value_or(PiaFinding{}).describe()
                          : std::string("this is no plot style table but ") +
                                (content.kind == FileKind::Pmp ? "" : "a ") +
                                kindName(content.kind));
    }
    table_ = std::move(*content.table);
    byColour_ = hasStylePerColour(table_);
    origins_.resize(table_.size());
    for (std::size_t place = 0; place < origins_.size(); ++place) {
        origins_[place] = place;
    }
    return {};
}

EditResult TableEditor::set(const std::vector<std::size_t>& places, std::wstring_view assignment) {
    const std::size_t end = assignment.find(L'=');
    const StyleSetting* setting =
        end == std::wstring_view::npos ? nullptr : findStyleSetting(assignment.substr(0, end));
    if (setting == nullptr) {
        EditRefusal refusal{EditFault::NotFound,
                            end == std::wstring_view::npos
                                ? quoted(assignment) + " is no SETTING=VALUE"
                                : "a style has no setting " + quoted(assignment.substr(0, end)),
                            std::wstring(assignment.substr(0, end)),
                            {}};
        for (const StyleSetting& each : styleSettings()) {
            refusal.present.emplace_back(each.word.begin(), each.word.end());
        }
        return refusal;
    }
    std::vector<CPlotStyle> changed;
    for (const std::size_t place : places) {
        changed.push_back(*table_.style(place));
        if (EditResult done = setStyle(changed.back(), *setting, assignment.substr(end + 1),
                                       table_.customLineweights());
            !done) {
            return done;
        }
    }
    for (std::size_t index = 0; index < places.size(); ++index) {
        *table_.style(places[index]) = changed[index];
    }
    return {};
}

EditResult TableEditor::checkStructure(const char* what) const {
    if (byColour_) {
        return refuse(
            EditFault::WrongKind,
            std::string("a colour table has one style for each of the 255 colours; ") + what);
    }
    return table_.size() < mostStyles
               ? EditResult()
               : refuse(EditFault::SizeInvalid, "the table has too many styles for that");
}

EditResult TableEditor::checkName(const std::wstring& name, std::size_t own) const {
    if (!isStyleName(name)) {
        return refuse(EditFault::NameInvalid, quoted(name) + " is no name for a style", name);
    }
    const std::wstring inner = innerName(name);
    for (std::size_t place = 0; place < table_.size(); ++place) {
        const CPlotStyle& style = *table_.style(place);
        if (place != own &&
            (ut::equalNoCase(style.locName(), name) || ut::equalNoCase(style.name(), inner))) {
            return refuse(EditFault::NameTaken,
                          "style " + std::to_string(place + 1) + " is called " +
                              quoted(style.locName()) + " already",
                          name);
        }
    }
    return {};
}

EditResult TableEditor::add(const std::wstring& name, const std::size_t* like) {
    if (EditResult fits = checkStructure("none can be added"); !fits) {
        return fits;
    }
    if (EditResult valid = checkName(name, noOrigin); !valid) {
        return valid;
    }
    std::vector<CPlotStyle> styles;
    std::vector<std::size_t> moved;
    for (std::size_t place = 0; place < table_.size(); ++place) {
        styles.push_back(*table_.style(place));
        moved.push_back(place);
    }
    styles.push_back(like == nullptr ? CPlotStyle() : *table_.style(*like));
    styles.back().updateName(name.c_str());
    std::vector<std::size_t> origins = origins_;
    origins.push_back(noOrigin);
    relist(styles, std::move(origins), moved);
    return {};
}

EditResult TableEditor::remove(const std::vector<std::size_t>& places) {
    if (EditResult fits = checkStructure("none can be removed"); !fits) {
        return fits;
    }
    const std::set<std::size_t> doomed(places.begin(), places.end());
    for (std::size_t entry = 0; table_.ACI() != nullptr && entry < CAciTable::count; ++entry) {
        const std::size_t used = placeOf(table_, table_.ACI()->at(entry));
        if (doomed.contains(used)) {
            return refuse(EditFault::WrongKind,
                          quoted(table_.style(used)->locName()) + " is the style of colour " +
                              std::to_string(entry + 1) + "; merge-pens gives colours another");
        }
    }
    if (doomed.size() >= table_.size()) {
        return refuse(EditFault::SizeInvalid, "one style has to stay");
    }
    std::vector<CPlotStyle> styles;
    std::vector<std::size_t> origins;
    std::vector<std::size_t> moved;
    for (std::size_t place = 0; place < table_.size(); ++place) {
        moved.push_back(styles.size());
        if (!doomed.contains(place)) {
            styles.push_back(*table_.style(place));
            origins.push_back(origins_[place]);
        }
    }
    relist(styles, std::move(origins), moved);
    return {};
}

EditResult TableEditor::rename(std::size_t place, const std::wstring& name) {
    if (EditResult valid = checkName(name, place); !valid) {
        return valid;
    }
    return table_.renameStyle(static_cast<int>(place), name.c_str())
               ? EditResult()
               : refuse(EditFault::NameInvalid, "the style cannot be called " + quoted(name));
}

void TableEditor::copy(std::size_t from, std::size_t to) {
    CPlotStyle copied = *table_.style(from);
    copied.setNames(table_.style(to)->name(), table_.style(to)->locName());
    *table_.style(to) = std::move(copied);
}

EqualStyles equalStyles(const CPlotStyleTable& table) {
    EqualStyles groups;
    using Settings = decltype(plot_style::settingsOf(CPlotStyle()));
    std::map<std::pair<Settings, std::wstring_view>, std::size_t> groupOf;
    const bool named = !hasStylePerColour(table);
    for (std::size_t place = 0; place < table.size(); ++place) {
        const CPlotStyle& style = *table.style(place);
        if (named && ut::equalNoCase(style.name(), L"Normal")) {
            continue;
        }
        const auto [group, isNew] =
            groupOf.try_emplace({plot_style::settingsOf(style), style.desc()}, groups.size());
        if (isNew) {
            groups.emplace_back();
        }
        groups[group->second].push_back(place);
    }
    std::erase_if(groups, [](const std::vector<std::size_t>& group) { return group.size() < 2; });
    return groups;
}

EditResult TableEditor::merge(const EqualStyles& groups) {
    if (EditResult fits = checkStructure("they stay, even when some are equal"); !fits) {
        return fits;
    }
    std::vector<std::optional<std::size_t>> into(table_.size());
    for (const std::vector<std::size_t>& group : groups) {
        for (const std::size_t place : group) {
            into[place] = group.front();
        }
    }
    std::vector<CPlotStyle> styles;
    std::vector<std::size_t> origins;
    std::vector<std::size_t> moved(table_.size());
    for (std::size_t place = 0; place < table_.size(); ++place) {
        if (into[place].value_or(place) != place) {
            moved[place] = moved[*into[place]];
            continue;
        }
        moved[place] = styles.size();
        styles.push_back(*table_.style(place));
        origins.push_back(origins_[place]);
    }
    relist(styles, std::move(origins), moved);
    return {};
}

EditResult TableEditor::setLineWeight(std::size_t index, std::wstring_view text) {
    if (index >= CCustomLineweightTable::count) {
        return refuse(EditFault::NotFound, "line weights are numbered 0 to " +
                                               std::to_string(CCustomLineweightTable::count - 1) +
                                               ", not " + std::to_string(index));
    }
    return lineWeightOf(text, table_.customLineweights()[index]);
}

void TableEditor::relist(const std::vector<CPlotStyle>& styles, std::vector<std::size_t> origins,
                         const std::vector<std::size_t>& movedTo) {
    std::array<int, CAciTable::count> places{};
    const bool hasColours = table_.hasACI() && table_.ACI() != nullptr;
    for (std::size_t entry = 0; hasColours && entry < places.size(); ++entry) {
        const std::size_t place = placeOf(table_, table_.ACI()->at(entry));
        places[entry] = place < movedTo.size() ? static_cast<int>(movedTo[place]) : -1;
    }
    rebuild(styles, hasColours ? places.data() : nullptr);
    origins_ = std::move(origins);
}

void TableEditor::mapColours(const int* places) {
    std::vector<CPlotStyle> styles;
    for (std::size_t place = 0; place < table_.size(); ++place) {
        styles.push_back(*table_.style(place));
    }
    rebuild(styles, places);
}

void TableEditor::rebuild(const std::vector<CPlotStyle>& styles, const int* places) {
    const std::unique_ptr<CPlotStyleTable> made(
        CPlotStyleTable::create(false, table_.description().c_str()));
    made->setScaleFactor(table_.scaleFactor());
    made->setApplyFactor(table_.applyFactor());
    made->setCustomLineweightDisplayUnits(table_.customLineweightDisplayUnits());
    made->customLineweights() = table_.customLineweights();
    for (std::size_t place = 1; place < styles.size(); ++place) {
        // Any name that no other has: the style's own comes with its settings.
        static_cast<void>(made->addStyle(std::to_wstring(place).c_str(), -1, nullptr));
    }
    for (std::size_t place = 0; place < styles.size(); ++place) {
        *made->style(place) = styles[place];
    }
    made->addACI(places);
    table_ = std::move(*made);
}

bool TableEditor::writeTo(PiaBlock& root) {
    const TreeMerge merged = mergeTable(*file_.input().root(), table_, origins_, root);
    changed_ = merged == TreeMerge::Changed;
    return merged != TreeMerge::Failed;
}

}  // namespace platen
