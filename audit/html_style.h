/// How the page of an audit looks: on a screen by day and by night, and on paper.
#pragma once

#include <string_view>

namespace platen {

inline constexpr std::string_view auditStyle = R"css(
:root {
  color-scheme: light dark;
  --paper: #ffffff; --ink: #1b2430; --soft: #5c6878; --line: #dde2e9; --panel: #f5f7fa;
  --accent: #1d5fa8; --error: #b3261e; --error-back: #fceceb; --warning: #8a5a00;
  --warning-back: #fdf3dc; --fine: #1c6e42; --fine-back: #e5f5ec;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #14181f; --ink: #e4e9f0; --soft: #9aa7b8; --line: #2d3643; --panel: #1c222c;
    --accent: #82b6f2; --error: #ff9d94; --error-back: #3d1d1c; --warning: #f0c468;
    --warning-back: #37290c; --fine: #84d6a6; --fine-back: #15301f;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; padding: 2.5rem 1.5rem 4rem; max-width: 72rem; background: var(--paper);
  color: var(--ink); font: 15px/1.5 system-ui, "Segoe UI", Roboto, "Helvetica Neue", Arial, sans-serif;
}
h1 { margin: 0; font-size: 1.75rem; line-height: 1.2; letter-spacing: -0.01em; }
h2 { margin: 3rem 0 0; padding-bottom: .4rem; border-bottom: 2px solid var(--line); font-size: 1.25rem;
  overflow-wrap: anywhere; }
h3 { display: flex; flex-wrap: wrap; align-items: baseline; gap: .6rem; margin: 2.2rem 0 .2rem;
  font-size: 1.05rem; }
p { margin: .3rem 0; }
a { color: var(--accent); }
code { font: .87em/1.45 ui-monospace, "Cascadia Mono", Consolas, Menlo, monospace; }
.soft { color: var(--soft); }
.where { margin: .4rem 0 0; overflow-wrap: anywhere; }
.tiles { display: flex; flex-wrap: wrap; gap: .75rem; margin: 1.5rem 0; padding: 0; list-style: none; }
.tiles li { flex: 1 1 8rem; padding: .8rem 1rem; border-radius: .5rem; background: var(--panel);
  color: var(--soft); }
.tiles strong { display: block; color: var(--ink); font-size: 1.6rem; line-height: 1.2; }
.tiles .error { background: var(--error-back); } .tiles .error strong { color: var(--error); }
.tiles .warning { background: var(--warning-back); } .tiles .warning strong { color: var(--warning); }
.tiles .fine { background: var(--fine-back); } .tiles .fine strong { color: var(--fine); }
.badge { padding: .05rem .5rem; border-radius: 1rem; font-size: .8rem; font-weight: 600;
  white-space: nowrap; }
.badge.error { background: var(--error-back); color: var(--error); }
.badge.warning { background: var(--warning-back); color: var(--warning); }
.word { color: var(--soft); font-weight: 400; }
table { width: 100%; margin: .6rem 0 0; border-collapse: collapse; }
th { padding: .4rem .75rem .4rem 0; border-bottom: 1px solid var(--soft); color: var(--soft);
  font-size: .8rem; font-weight: 600; text-align: left; }
td { padding: .55rem .75rem .55rem 0; border-bottom: 1px solid var(--line); vertical-align: top;
  overflow-wrap: anywhere; }
td:last-child, th:last-child { padding-right: 0; }
td.number, th.number { text-align: right; font-variant-numeric: tabular-nums; }
.findings { table-layout: fixed; } .findings th:first-child { width: 32%; }
.name { font-weight: 600; } .folder { display: block; color: var(--soft); font-size: .87rem; }
.also { margin-top: .3rem; color: var(--soft); font-size: .87rem; }
ul.lines { margin: .35rem 0 0; padding: 0; list-style: none; font-size: .92rem; }
ul.lines li { padding: .1rem 0 .1rem .8rem; border-left: 2px solid var(--line); }
summary { margin-top: .35rem; color: var(--accent); font-size: .92rem; cursor: pointer; }
.swatches { display: inline-flex; gap: 2px; margin-right: .5rem; vertical-align: -1px; }
.swatches i { width: .8rem; height: .8rem; border: 1px solid var(--soft); border-radius: 2px;
  print-color-adjust: exact; -webkit-print-color-adjust: exact; }
.mend { display: block; margin-top: .5rem; padding: .35rem .6rem; border-radius: .3rem;
  background: var(--panel); white-space: pre-wrap; overflow-wrap: anywhere; user-select: all; }
.mend::before { content: "mend: "; color: var(--soft); user-select: none; }
.notes { margin-top: 3rem; padding: .9rem 1.1rem; border-radius: .5rem; background: var(--panel); }
.notes ul { margin: .3rem 0 0; padding-left: 1.2rem; }
footer { margin-top: 2rem; color: var(--soft); font-size: .87rem; }
@media (max-width: 40rem) {
  body { padding: 1.5rem 1rem 3rem; }
  .findings, .findings tbody, .findings tr, .findings td { display: block; }
  .findings thead { display: none; }
  .findings tr { padding: .6rem 0; border-bottom: 1px solid var(--line); }
  .findings td { padding: 0 0 .2rem; border: 0; }
}
@media print {
  :root {
    color-scheme: light;
    --paper: #fff; --ink: #000; --soft: #444; --line: #bbb; --panel: #fff; --accent: #000;
    --error: #900; --error-back: #fff; --warning: #630; --warning-back: #fff; --fine: #040;
    --fine-back: #fff;
  }
  @page { margin: 16mm; }
  body { max-width: none; padding: 0; font-size: 9.5pt; }
  h3 { margin-top: 1.4rem; } td { padding-top: .3rem; padding-bottom: .3rem; }
  .tiles li, .badge, .mend, .notes { border: 1px solid var(--line); }
  h2, h3, .remedy { break-after: avoid; } tr, li { break-inside: avoid; }
  thead { display: table-header-group; } a { text-decoration: none; }
  details::details-content { content-visibility: visible; block-size: auto; }
  summary { display: none; }
}
)css";

}  // namespace platen
