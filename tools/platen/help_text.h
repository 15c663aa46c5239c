/// Worked examples, shown below the options of each command.
#pragma once

namespace platen::help {

inline constexpr const char* program = R"(Examples:
  platen create ctb -o pens.ctb --description "Office plotter"
  platen info pens.ctb
  platen create pc3 --device "Print As PDF" -o office.pc3
  platen set office.pc3 media/number_of_copies=2 --in-place
  platen paper add office.pc3 --name "Long roll" --size 914x5000
  platen convert pens.ctb -o pens.stb
  platen get pens.stb plot_style/1/name
  platen check *.ctb *.stb

Exit codes: 0 done; 1 what was asked for is not there; 2 an error or wrong usage; 3 done with
warnings. Over several files the worst of 2, 3, 1, 0 counts. Data goes to standard output,
messages to standard error. Files are recognised by their content, whatever their names.
platen COMMAND --help says more.)";

inline constexpr const char* info = R"(Examples:
  platen info pens.ctb                  a summary: container, settings, colours by equal styles
  platen info --json a.ctb b.stb        one JSON object a line, schema platen.info/1
  platen info plotter.pc3               device, paper, resolution, PMP, custom papers, properties
  platen info --json pens.ctb | python3 -m json.tool)";

inline constexpr const char* get =
    R"(A PATH is the names from the outermost block on, joined by "/". When several items
have the name, a type picks one: ":str", ":num", ":bool", ":bin" or ":block" at the end.

Examples:
  platen get pens.ctb                           the whole body text
  platen get pens.ctb plot_style/0/name         one value
  platen get pens.ctb plot_style/0              the lines of one block
  platen get pens.ctb plot_style/0 --json       the block as a JSON body that can be read again
  platen get pens.ctb description:str scale_factor:num)";

inline constexpr const char* check =
    R"(Each finding is a line with a code that stays the same from release to release,
the place and a remedy. Errors keep the file from being used (exit 2), warnings do not (exit 3).

Examples:
  platen check pens.ctb                 "pens.ctb: ok, ..." or the findings
  platen check plotter.pc3              the PMP that it names is looked for, too
  platen check --printers plotter.pc3   Windows: is the printer there, and does it take all this?
  platen check --json *.ctb             one JSON object a line, schema platen.check/1)";

inline constexpr const char* convert =
    R"(IN is a compressed file, a JSON body or bare body text. OUT is replaced in one
step when it exists, and stays as it was when anything fails; it may be IN. Unknown keys, their
order and the spelling of numbers survive, unless colours are gathered into named styles; JSON
has an order and a spelling of its own.

Examples:
  platen convert pens.ctb -o pens.stb             prints which colours went to which style
  platen convert pens.ctb -o pens.stb --prefix Pen     Pen_1, Pen_2 ... instead of Style_1 ...
  platen convert pens.ctb -o pens.json            compressed to JSON, and back:
  platen convert pens.json -o pens.ctb
  platen convert pens.ctb -o pens.txt             the body text, for an editor, and back:
  platen convert pens.txt -o pens.ctb
  platen convert plotter.bak -o plotter --to pc3  when the name of OUT does not say it)";

inline constexpr const char* create =
    R"text(OUT is replaced in one step when it exists; what is lost with the old file is a
warning. The first word decides what is made, not the name of OUT. Devices and papers are found
without regard to case.

Examples:
  platen create ctb -o pens.ctb                   a style for each of the 255 colours
  platen create stb -o named.stb --description "Named pens"     one style, "Normal"
  platen create pc3 --device "Print As PDF" -o pdf.pc3
  platen create pc3 --device "Print As PNG" --paper "XGA (1024.00 x 768.00 Pixels)" -o png.pc3
  platen create pc3 --printer "Office" -o office.pc3     its defaults (Windows)
  platen create pmp --from pdf.pc3 -o pdf.pmp     no papers yet; platen paper has them)text";

inline constexpr const char* set =
    R"(A PATH is what platen get takes. An item keeps its type; a new one names it:
":str", ":num", ":bool" (TRUE or FALSE), ":bin" (hexadecimal) or ":block" (no value). Everything
else stays as it was: unknown items, their order, the spelling of numbers, the version of the
file. Either all changes are made or none.

Examples:
  platen set a.pc3 media/number_of_copies=2 -o b.pc3
  platen set a.pc3 meta/config_description="Office, 2nd floor" --in-place=.bak
  platen set a.pc3 vendor:block vendor/level:num=3 vendor/key:bin=00FF --in-place
  platen set a.pc3 --delete vendor/key --delete custom --in-place)";

inline constexpr const char* migrate =
    R"(Configurations are recognised by their content. Each that names printer OLD names NEW
afterwards; the old file stays beside it with ".bak" at the end of its name, and names that end so
are passed over, as are symbolic links. Everything else in the files stays as it was.

On Windows NEW is asked for its driver, and what it will not take of a configuration is a warning
(exit 3). Elsewhere, or with --names-only, the driver's name stays, too: when NEW has another one,
programs on Windows look for a printer of the old driver.

Examples:
  platen migrate plotters --map "Old plotter=New plotter" --dry-run
  platen migrate plotters --map "Old plotter=New plotter" --map Office=Office2)";

inline constexpr const char* papers =
    R"(Lengths are in millimetres and inches, or in pixels for images.

Examples:
  platen papers --device pdf            papers of "Print As PDF"
  platen papers --device image          papers of the image devices
  platen papers --device none           common plotter papers
  platen papers --catalogue             Windows paper ids
  platen papers --printer Plotter       papers of an installed printer (Windows)
  platen papers a.pc3                   custom papers, also those of the PMP that it names
  platen papers --json a.pmp            one JSON object a line, schema platen.papers/1)";

inline constexpr const char* paper =
    R"(FILE is a plot configuration or plot model parameters (PMP). New papers go into the
PMP that the configuration names; without one a PMP is made beside it (in the folder PMP, if there
is one there). Names are found without regard to case.

Examples:
  platen paper add a.pc3 --name "Long roll" --size 914x5000 --units mm
  platen paper add a.pc3 --name "Card" --size 3.5x2 --units in --margins 0.1,0.1,0.1,0.1
  platen paper resize a.pc3 --name "long roll" --size 914x7000
  platen paper rename a.pmp --name "Long roll" --to "Roll 914"
  platen paper remove a.pmp --name Card)";

inline constexpr const char* printers =
    R"(Name, driver, port, number of papers and comment of each, and which is the default.

Examples:
  platen printers
  platen printers --json                one JSON object a line, schema platen.printers/1)";

inline constexpr const char* devmode =
    R"(A device mode holds the settings of a printer's driver. That of a configuration is what
its printer, which has to be installed, makes of its settings.

Examples:
  platen devmode Plotter                a line for each field, then the driver's private bytes
  platen devmode office.pc3
  platen devmode Plotter --json         one JSON object, schema platen.devmode/1)";

}  // namespace platen::help
