// Questions that need an answer before something is done.
import { useLayoutEffect, useRef, useState } from 'preact/hooks';
import { app, attempt, closeDialog, edit, say, setView, show } from './app.js';
import { devices, inRanges, pensOf, presets } from './pens.js';
import { PrintDialog } from './print.jsx';
import { plural } from './words.js';

export function Dialog({ title, action, onDone, children, wide = false }) {
    const element = useRef();
    useLayoutEffect(() => {
        element.current.showModal();
        return () => element.current?.close();
    }, []);
    return (
        <dialog ref={element} aria-labelledby="dialog-title" class={wide ? 'wide' : ''}
            onClose={() => app.dialog && closeDialog()}>
            <form method="dialog" onSubmit={(event) => {
                event.preventDefault();
                if (!onDone || onDone(new FormData(event.target)) !== false) {
                    closeDialog();
                }
            }}>
                <h2 id="dialog-title">{title}</h2>
                <div class="content">{children}</div>
                <p class="tools end">
                    {action && <button type="submit" class="primary">{action}</button>}
                    <button type="button" onClick={closeDialog}>{action ? 'Cancel' : 'Close'}</button>
                </p>
            </form>
        </dialog>
    );
}

const newKinds = { ctb: 'Colour-dependent table (CTB)', stb: 'Named table (STB)', pc3: 'Plot configuration (PC3)' };

function NewDialog() {
    const [kind, setKind] = useState('ctb');
    const make = (data) => attempt(() => {
        const { engine } = app.workspace;
        const name = data.get('name').trim() || 'new';
        const file = app.workspace.addNew(name.toLowerCase().endsWith(`.${kind}`) ? name : `${name}.${kind}`,
            kind === 'pc3' ? engine.createConfiguration(data.get('device'))
                : engine.createTable(kind, data.get('preset') || null));
        app.dialog = null;
        show(file);
        return true;
    }) ?? false;
    return (
        <Dialog title="New file" action="Make it" onDone={make}>
            <label class="field"><span>Kind</span>
                <select value={kind} onChange={(event) => setKind(event.target.value)}>
                    {Object.entries(newKinds).map(([key, text]) => <option key={key} value={key}>{text}</option>)}
                </select></label>
            <label class="field"><span>Name</span><input name="name" placeholder="new" /></label>
            {kind === 'ctb' && (
                <fieldset>
                    <legend>Begins with</legend>
                    {[{ name: '', purpose: 'standard settings for all pens' }, ...presets()].map((preset) => (
                        <label key={preset.name} class="choice">
                            <input type="radio" name="preset" value={preset.name} defaultChecked={preset.name === ''} />
                            <span>{preset.purpose}</span></label>
                    ))}
                </fieldset>
            )}
            {kind === 'pc3' && (
                <label class="field"><span>Device</span><select name="device">
                    {devices().map((device) => <option key={device}>{device}</option>)}
                </select></label>
            )}
        </Dialog>
    );
}

function AddStyle({ dialog: { file, like } }) {
    const add = (data) => {
        const name = data.get('name').trim();
        const model = pensOf(file).find((pen) => `${pen.number}` === data.get('like'));
        const done = edit(file, `style ${name} added`, (document) =>
            document.do('platen_style_add', name, model ? model.name : null));
        if (done) {
            const number = pensOf(file).length;
            setView(file, { selected: new Set([number]), cursor: number, anchor: number });
        }
        return done;
    };
    return (
        <Dialog title="Add a style" action="Add" onDone={add}>
            <label class="field"><span>Name</span><input name="name" required /></label>
            <label class="field"><span>Like</span><select name="like">
                <option value="">standard settings</option>
                {pensOf(file).map((pen) => <option key={pen.number} value={pen.number}
                    selected={pen.number === like?.number}>{pen.label}</option>)}
            </select></label>
        </Dialog>
    );
}

function RenameStyle({ dialog: { file, pen } }) {
    return (
        <Dialog title="Rename a style" action="Rename" onDone={(data) => edit(file,
            `style ${pen.label} is called ${data.get('name').trim()}`, (document) =>
                document.do('platen_style_rename', pen.name, data.get('name').trim()))}>
            <label class="field"><span>Name</span><input name="name" required value={pen.label} /></label>
        </Dialog>
    );
}

function Convert({ dialog: { file } }) {
    const to = app.workspace.kind(file) === 'ctb' ? 'stb' : 'ctb';
    const [prefix, setPrefix] = useState('Style');
    let notes = null;
    let fault = null;
    try {
        const { handle, notes: said } = app.workspace.document(file).convert(to, prefix);
        handle.destroy();
        notes = said;
    } catch (error) {
        fault = error.message;
    }
    const make = () => attempt(() => {
        const { handle } = app.workspace.document(file).convert(to, prefix);
        const made = app.workspace.addNew(file.name.replace(/(\.[^.]*)?$/, `.${to}`), handle);
        app.dialog = null;
        show(made);
        say(`${made.name} is made of ${file.name}.`);
        return true;
    }) ?? false;
    return (
        <Dialog title={`Make ${to === 'stb' ? 'a named table' : 'a colour-dependent table'} of this one`}
            action={fault ? null : 'Make it'} onDone={make}>
            {to === 'stb' && (
                <label class="field"><span>Names begin with</span><input value={prefix}
                    onInput={(event) => setPrefix(event.target.value)} /></label>
            )}
            {fault && <p class="verdict">{fault}</p>}
            {notes?.in_order === false && <p class="verdict">Some colours of this file name styles of
                other colours; the new table goes by the styles’ order.</p>}
            {notes?.styles.length > 0 && (
                <table>
                    <thead><tr><th scope="col">Style</th><th scope="col">Stands for pens</th></tr></thead>
                    <tbody>{notes.styles.map((style) => (
                        <tr key={style.name}><th scope="row"><bdi>{style.name}</bdi></th>
                            <td>{inRanges(style.colors)}</td></tr>
                    ))}</tbody>
                </table>
            )}
            {notes?.lost.map((text) => <p key={text} class="verdict"><bdi>{text}</bdi></p>)}
            <p class="quiet">The new table opens as a file of its own; this one stays.</p>
        </Dialog>
    );
}

function Repair({ dialog: { file, safeOnly, report, bytes } }) {
    const words = safeOnly ? 'fixed' : 'repaired';
    const place = (entry) => [entry.line != null ? `line ${entry.line}` : entry.offset != null && `byte ${entry.offset}`,
        entry.path].filter(Boolean).join(', ');
    return (
        <Dialog title={safeOnly ? 'Fix what is certain' : 'Repair'} wide
            action={bytes ? 'Take the repaired file' : null} onDone={() => attempt(() => {
                app.workspace.replace(file, words, app.workspace.engine.open(bytes, file.path));
                say(`${file.name} is ${words}. Undo takes it back.`);
                return true;
            }) ?? false}>
            <p>{plural(report.assumptions.length + report.omitted_assumptions, 'thing is', 'things are')} put
                right{report.losses.length > 0 ? `, and ${plural(report.losses.length + report.omitted_losses,
                    'piece is', 'pieces are')} lost` : '; nothing is lost'}. Nothing changes before you take it.</p>
            <h3>What is taken for granted</h3>
            <ul class="finding-list">
                {report.assumptions.map((entry, number) => (
                    <li key={number} class={entry.safe ? 'safe' : 'warning'}>
                        <p><strong>{entry.safe ? 'Certain' : 'Guessed'}</strong> {entry.message}</p>
                        <p class="quiet">{place(entry)}
                            {entry.found && <> found <q><bdi>{entry.found}</bdi></q></>}
                            {entry.taken && <> taken <q><bdi>{entry.taken}</bdi></q></>}</p>
                    </li>
                ))}
            </ul>
            {report.omitted_assumptions > 0 && <p class="quiet">and {report.omitted_assumptions} more</p>}
            {report.losses.length > 0 && <>
                <h3>What is lost</h3>
                <ul class="finding-list">
                    {report.losses.map((loss, number) => (
                        <li key={number} class="error"><p>{loss.count} {loss.unit} <q><bdi>{loss.text}</bdi></q></p>
                            <p class="quiet">{place(loss)}</p></li>
                    ))}
                </ul>
            </>}
        </Dialog>
    );
}

const keys = [
    ['Ctrl+O', 'open files'], ['Ctrl+S', 'save this file'], ['Ctrl+Z, Ctrl+Y', 'undo, redo'],
    ['Ctrl+P', 'print'], ['Arrow keys', 'go from pen to pen'], ['Shift+Arrow keys', 'select a range'],
    ['Ctrl+Arrow keys', 'go without selecting'], ['Space', 'select this pen, too, or no more'],
    ['Ctrl+A', 'select all that are shown'], ['=', 'select all pens equal to this one'],
    ['Enter', 'go to the settings of the selected pens'], ['Esc', 'take an entry back; select one pen'], ['?', 'this help'],
];

function Help() {
    return (
        <Dialog title="Help">
            <p>Drop plotter files on this page or open them. Every change can be undone, and nothing is
                written before you save. Files stay on this computer: the page sends nothing.</p>
            <h3>Keys</h3>
            <dl class="keys">
                {keys.map(([key, what]) => <div key={key}><dt>{key}</dt><dd>{what}</dd></div>)}
            </dl>
            <h3>Selecting pens</h3>
            <p>The field Select takes numbers such as 1-9,250, a name in which * stands for any letters, and
                =7 for all pens equal to pen 7.</p>
            <p class="quiet">Platen {app.workspace.engine.version}</p>
        </Dialog>
    );
}

const all = { new: NewDialog, 'add-style': AddStyle, 'rename-style': RenameStyle, convert: Convert,
    repair: Repair, help: Help, print: PrintDialog };

export function Dialogs() {
    const { dialog } = app;
    const Content = dialog && all[dialog.name];
    return Content && <Content dialog={dialog} />;
}
