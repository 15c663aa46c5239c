// Every setting of the pens that are selected; where they differ it says so.
import { useState } from 'preact/hooks';
import { app, attempt, edit } from './app.js';
import { fresh, inRanges, palette, pensOf, selectionText, settings } from './pens.js';
import { selectEqual } from './pen_list.jsx';
import { plural, settingLabels, settingOrder } from './words.js';

const mixedText = 'different';

/** What all have in common; null where they differ. */
const common = (pens, word) => pens.every((pen) => pen[word] === pens[0][word]) ? pens[0][word] : null;

function Field({ label, hint, children }) {
    return (
        <label class="field">
            <span>{label}{hint && <small>{hint}</small>}</span>
            {children}
        </label>
    );
}

/** An input whose value counts when it is left or Enter is pressed; Escape takes it back. A value
 *  that is refused goes back, too. */
export function Entry({ value, onCommit, type = 'text', list, ...more }) {
    const [, again] = useState(0);
    const commit = (event) => {
        if (event.target.value !== (value ?? '') && !onCommit(event.target.value)) {
            event.target.value = value ?? '';
        }
        again((count) => count + 1);
    };
    return (
        <input type={type} value={value ?? ''} placeholder={value === null ? mixedText : ''} {...more}
            onChange={commit} onKeyDown={(event) => {
                if (event.key === 'Escape') {
                    event.target.value = value ?? '';
                    event.target.blur();
                }
            }} />
    );
}

function OnOff({ label, value, onCommit }) {
    return (
        <label class="field check">
            <span>{label}{value === null && <small>{mixedText}</small>}</span>
            <input type="checkbox" checked={value === 'on'}
                ref={(box) => { if (box) { box.indeterminate = value === null; } }}
                onChange={(event) => onCommit(event.target.checked ? 'on' : 'off')} />
        </label>
    );
}

function Colour({ value, onCommit }) {
    const kind = value === null ? 'mixed' : value === 'object' ? 'object'
        : value.startsWith('index:') ? 'index' : 'rgb';
    const number = kind === 'index' ? value.slice(6) : '';
    const rgb = kind === 'rgb' ? value.slice(0, 7) : kind === 'index' ? palette()[number - 1] : '#000000';
    const choose = (event) => {
        const values = { object: 'object', index: 'index:7', rgb };
        if (!onCommit(values[event.target.value])) {
            event.target.value = kind;
        }
    };
    return (
        <div class="colour" role="group" aria-label="Colour">
            <Field label="Colour">
                <select value={kind} onChange={choose}>
                    {kind === 'mixed' && <option value="mixed" disabled>{mixedText}</option>}
                    <option value="object">the object’s</option>
                    <option value="index">by number</option>
                    <option value="rgb">true colour</option>
                </select>
            </Field>
            {kind === 'index' && (
                <Field label="Colour number" hint="1 to 255">
                    <Entry type="number" min="1" max="255" value={number}
                        onCommit={(text) => onCommit(`index:${text}`)} />
                </Field>
            )}
            {kind === 'rgb' && (
                <div class="field">
                    <span id="rgb-label">True colour</span>
                    <span class="pair">
                        <input type="color" aria-label="Pick a colour" value={rgb}
                            onChange={(event) => onCommit(event.target.value)} />
                        <Entry aria-labelledby="rgb-label" class="length" value={rgb} onCommit={onCommit} />
                    </span>
                </div>
            )}
        </div>
    );
}

function LineWeight({ file, value, onCommit }) {
    const { lineweights } = app.workspace.ask(file, 'platen_lineweights');
    const values = [...new Set(lineweights.map((weight) => weight.millimetres))]
        .sort((one, other) => one - other);
    const known = value === null || value === 'object' || values.some((mm) => `${mm} mm` === value);
    return (
        <Field label="Line weight">
            <select value={value ?? 'mixed'} onChange={(event) => onCommit(event.target.value)}>
                {value === null && <option value="mixed" disabled>{mixedText}</option>}
                {!known && <option value={value} disabled>{value}</option>}
                <option value="object">the object’s</option>
                {values.map((mm) => <option key={mm} value={`${mm} mm`}>{mm.toFixed(2)} mm</option>)}
            </select>
        </Field>
    );
}

/** Numbers that files have, which nothing gives a name to. */
function FileNumber({ label, value, standard, onCommit }) {
    const isStandard = value === standard;
    return (
        <div class="field">
            <span>{label}{isStandard && <small>standard</small>}</span>
            <span class="pair">
                <Entry type="number" min="0" aria-label={label} value={value} onCommit={onCommit} />
                <button type="button" aria-disabled={isStandard} aria-label={`${label}: standard`}
                    onClick={() => isStandard || onCommit('standard')}>Standard</button>
            </span>
        </div>
    );
}

function Setting({ file, setting, value, onCommit }) {
    const label = settingLabels[setting.word] ?? setting.word;
    if (setting.word === 'color') {
        return <Colour value={value} onCommit={onCommit} />;
    }
    if (setting.word === 'lineweight') {
        return <LineWeight file={file} value={value} onCommit={onCommit} />;
    }
    if (setting.values.startsWith('on, off')) {
        return <OnOff label={label} value={value} onCommit={onCommit} />;
    }
    if (setting.values.includes('standard')) {
        return <FileNumber label={label} value={value} standard={fresh()[setting.word]} onCommit={onCommit} />;
    }
    if (setting.values === 'any text') {
        return <Field label={label}><Entry value={value} onCommit={onCommit} /></Field>;
    }
    const percent = setting.values.startsWith('0 to 100');
    return (
        <Field label={label} hint={percent ? 'percent of ink' : ''}>
            <Entry type="number" min="0" max={percent ? 100 : undefined}
                step={setting.values.includes('decimal') ? 'any' : 1} value={value} onCommit={onCommit} />
        </Field>
    );
}

function CopyFrom({ file, selected }) {
    const pens = pensOf(file);
    const byColour = app.workspace.kind(file) === 'ctb';
    const copy = (event) => {
        event.preventDefault();
        const from = Number(new FormData(event.target).get('from'));
        const pen = pens.find((other) => other.number === from);
        edit(file, `${inRanges(selected)} made like ${pen?.label ?? from}`, (document) =>
            document.do('platen_style_copy', selectionText(file, [from]), selectionText(file, selected)));
    };
    return (
        <form class="pair copy" onSubmit={copy}>
            <label class="grow">Make like {byColour && 'pen'}
                {byColour ? <input type="number" name="from" min="1" max={pens.length} required />
                    : <select name="from">
                        {pens.map((pen) => <option key={pen.number} value={pen.number}>{pen.label}</option>)}
                    </select>}
            </label>
            <button type="submit">Copy settings</button>
        </form>
    );
}

export function StyleForm({ file, view, selected }) {
    const pens = pensOf(file).filter((pen) => view.selected.has(pen.number));
    if (pens.length === 0) {
        return <aside class="form"><p class="quiet">Select pens to see and change their settings.</p></aside>;
    }
    const title = pens.length === 1 ? pens[0].label : plural(pens.length, 'pen');
    const known = new Map(settings().map((setting) => [setting.word, setting]));
    const ordered = [...settingOrder.filter((word) => known.has(word)),
        ...[...known.keys()].filter((word) => !settingOrder.includes(word))];
    const setTo = (word) => (value) => edit(file,
        `${(settingLabels[word] ?? word).toLowerCase()} of ${
            pens.length === 1 ? title : `pens ${inRanges(selected)}`}: ${value || 'none'}`,
        (document) => document.do('platen_style_set', selectionText(file, selected), `${word}=${value}`));
    return (
        <aside class="form" aria-label="Settings of the selected pens">
            <h3><bdi>{title}</bdi></h3>
            <p class="quiet numbers">{pens.length > 1 && inRanges(selected)}</p>
            <div class="fields" key={`${file.path} ${selected.join()}`}>
                {ordered.map((word) => (
                    <Setting key={word} file={file} setting={known.get(word)}
                        value={common(pens, word)} onCommit={setTo(word)} />
                ))}
            </div>
            <div class="more">
                {pens.length === 1 && (
                    <button type="button" onClick={() => attempt(() => selectEqual(file, pens[0].number))}>
                        Select all equal to this one</button>
                )}
                <CopyFrom file={file} selected={selected} />
            </div>
        </aside>
    );
}
