// What is done with a table as a whole, and with the styles of a named one.
import { app, attempt, attemptLater, complain, download, edit, openDialog, setView } from './app.js';
import { pensOf, selectionText } from './pens.js';
import { moveWithin } from './keys.js';
import { plural } from './words.js';

const stem = (name) => name.replace(/\.[^.]*$/, '');

function exportCsv(file) {
    attempt(() => download(`${stem(file.name)}.csv`,
        app.workspace.document(file).bytes('platen_table_csv'), 'text/csv'));
}

export const importCsv = (file, csv) => attemptLater(async () => {
    const bytes = new Uint8Array(await csv.arrayBuffer());
    edit(file, `settings taken from ${csv.name}`, (document) => document.do('platen_table_read_csv', bytes));
});

function mergeEqual(file) {
    attempt(() => {
        const before = pensOf(file).length;
        const { groups } = app.workspace.edit(file, 'equal styles made one',
            (document) => document.json('platen_styles_merge_equal'));
        setView(file, { selected: new Set([1]), cursor: 1 });
        app.message = { isError: false, text: groups.length === 0 ? 'No two styles are equal.'
            : `${before - pensOf(file).length} styles went: ${groups.map((names) =>
                `${names[0]} stands for ${names.slice(1).join(', ')}`).join('; ')}.` };
        app.render();
    });
}

function removeSelected(file, selected) {
    const names = pensOf(file).filter((pen) => selected.includes(pen.number)).map((pen) => pen.label);
    if (edit(file, `${plural(names.length, 'style')} removed: ${names.join(', ')}`, (document) =>
        document.do('platen_style_remove', selectionText(file, selected)))) {
        setView(file, { selected: new Set([1]), cursor: 1, anchor: 1 });
    }
}

export function TableTools({ file, view }) {
    const named = app.workspace.kind(file) === 'stb';
    const selected = [...view.selected].sort((one, other) => one - other);
    const one = selected.length === 1 ? pensOf(file).find((pen) => pen.number === selected[0]) : undefined;
    return (
        <div class="tools table-tools" role="toolbar" aria-label="The table" onKeyDown={moveWithin('button')}>
            {named && <>
                <button type="button" onClick={() => openDialog('add-style', { file, like: one })}>Add style</button>
                <button type="button" aria-disabled={!one}
                    onClick={() => one && openDialog('rename-style', { file, pen: one })}>Rename</button>
                <button type="button" aria-disabled={selected.length === 0}
                    onClick={() => selected.length > 0 && removeSelected(file, selected)}>Remove</button>
                <button type="button" onClick={() => mergeEqual(file)}>Merge equal styles</button>
                <span class="gap" />
            </>}
            <button type="button" onClick={() => openDialog('convert', { file })}>
                {named ? 'Convert to CTB' : 'Convert to STB'}</button>
            <button type="button" onClick={() => exportCsv(file)}>Export CSV</button>
            <button type="button" onClick={() => document.getElementById('choose-csv').click()}>Import CSV</button>
            <input id="choose-csv" type="file" accept=".csv,text/csv" hidden onChange={(event) => {
                const [csv] = event.target.files;
                event.target.value = '';
                csv ? importCsv(file, csv) : complain(new Error('no file was chosen'));
            }} />
        </div>
    );
}
