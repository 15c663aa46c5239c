/// Changing plotter files: items by their paths, papers and plot styles by their names.
///
///     platen::SourceFile file;
///     if (file.read(L"plan.pc3")) {
///         platen::ItemEditor editor(*file.input().root());
///         if (editor.set(L"media/number_of_copies", L"2")) {
///             file.write(L"plan.pc3");
///         }
///     }
#pragma once

#include <platen/edit_apply.h>
#include <platen/edit_file_mark.h>
#include <platen/edit_files.h>
#include <platen/edit_items.h>
#include <platen/edit_merge.h>
#include <platen/edit_papers.h>
#include <platen/edit_repair.h>
#include <platen/edit_result.h>
#include <platen/edit_styles.h>
#include <platen/edit_table_presets.h>
