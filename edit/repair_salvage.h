/// The way through a damaged body.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "edit/repair_body.h"
#include "edit/repair_lines.h"

namespace platen {

class BodySalvage {
public:
    BodySalvage(std::string_view body, bool torn, const PiaLimits& limits, RepairNotes& notes);

    SalvagedBody run();

private:
    using Line = repair_lines::Line;

    struct Level {
        std::string name;
        /// By type and name, what was taken.
        std::map<std::string, std::string, std::less<>> items{};
    };

    std::size_t depth() const { return levels_.size() - 1; }
    std::uint64_t lineNumber() const { return index_ + 1; }
    std::wstring pathOf(std::string_view name) const;
    const Line* nextLine() const;

    // What is said about the line that is being looked at.
    void assume(RepairCode code, std::string_view found, std::string_view taken = {},
                std::string_view name = {});
    void lose(Loss::Unit unit, std::uint64_t count, std::string_view text);
    /// Leaves a whole line out.
    void leaveOut(RepairCode code, std::string_view text);
    void emit(std::string_view text);
    void close();

    // --- What the indentation says (repair_indentation.cpp) ---

    /// Leaves out a block with all its lines, of which this is the first.
    void beginLeftOut(std::size_t indentation);
    void endLeftOut();
    /// True when the line belongs to a block that is left out.
    bool isLeftOut(std::string_view text);
    /// Closes blocks that have ended by the indentation of the line. False when the line is left
    /// out, since it belongs to no block that was begun.
    bool followIndentation(const Line& line);
    /// Leaves out the lines from here to the end of a block whose beginning is missing. False when
    /// they do not end as those of a block do.
    bool leavesOutHeadless(std::size_t indentation);

    // --- Lines; each returns what follows in the line behind a line feed that is missing ---

    void takeLine(const Line& line);
    /// As much of a line as a reader takes at once; binary values may go on.
    std::string_view shortened(std::string_view text);
    std::string_view take(std::string_view text);
    std::string_view takeClosing(std::string_view text, std::size_t brace);
    std::string_view takeOpening(std::string_view text, std::size_t brace);
    std::string_view takeItem(std::string_view text, std::size_t equals);
    /// What is behind a brace.
    std::string_view behind(std::string_view rest);
    /// A line without marks: the beginning of a block if the next one stands deeper.
    void takeOther(std::string_view text);
    void open(std::string_view indentedName);
    /// Takes a value up to the next backslash, as readers do, but not over other items.
    void takeBinary(std::string_view before, const std::string& name, std::string_view first);
    /// Adds the line of an item, whose name may be taken.
    void add(std::string_view before, const std::string& name, char type, std::string_view value,
             const std::string& line);
    /// Another name for an item whose name is taken, to be told apart later.
    std::optional<std::string> markedName(std::string_view name, char type);
    bool mayAddItem();

    std::vector<Line> lines_;
    repair_lines::TextEncoding encoding_;
    const bool indented_;
    const bool torn_;
    const PiaLimits& limits_;
    RepairNotes& notes_;
    SalvagedBody result_;
    std::vector<Level> levels_{1};
    std::size_t index_ = 0;
    std::size_t items_ = 0;
    bool full_ = false;
    /// Lines that may still be looked at in advance.
    std::size_t lookAhead_ = 0;

    /// Blocks that are open in one that is left out, itself among them; 0 when there is none.
    std::size_t leftOutDepth_ = 0;
    std::size_t leftOutIndentation_ = 0;
    std::uint64_t leftOutLines_ = 0;
    std::uint64_t leftOutFrom_ = 0;
};

}  // namespace platen
