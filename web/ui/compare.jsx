// Two files side by side, and what one takes from the other.
import { app, attempt, isTable, say, setView } from './app.js';
import { pensOf, settings } from './pens.js';
import { Line } from './pen_list.jsx';
import { plural, settingLabels } from './words.js';

/** What is different from this file to another one; both orders are asked for where changes go. */
const differences = (from, to) => app.workspace.know(from, `diff ${to.path} ${to.steps.length} ${to.bytes.length}`,
    () => app.workspace.document(from).json('platen_compare', app.workspace.document(to)));

/** Differences that belong together, such as those of one style. */
function gathered(list) {
    const groups = new Map();
    list.forEach((difference) => {
        const depth = difference.place.length > 2 ? 2 : difference.place.length;
        const key = JSON.stringify(difference.place.slice(0, depth));
        groups.set(key, [...(groups.get(key) ?? []), difference]);
    });
    return groups;
}

/** What is different and both values, in words. */
function inParts(difference) {
    const { before, after, text, change } = difference;
    const said = (value, mm) => (mm === undefined ? value : `${mm} mm`);
    const ends = change === 'changed' ? ` ${said(before, difference.before_mm)} -> ${said(after, difference.after_mm)}` : '';
    if (ends !== '' && text.endsWith(ends)) {
        return { what: text.slice(0, -ends.length), before: said(before, difference.before_mm),
            after: said(after, difference.after_mm) };
    }
    return { what: text, before: change === 'added' ? '' : before ?? '', after: change === 'removed' ? '' : after ?? '' };
}

const inWords = (value) => (value === 'object' ? 'the object’s' : value);

/** The same for all of a style that both tables have: its settings, as people know them. */
function styleParts(left, right) {
    return settings().filter(({ word }) => left[word] !== right[word]).map(({ word }) =>
        ({ what: settingLabels[word] ?? word, before: inWords(left[word]), after: inWords(right[word]) }));
}

/** Lets `target` become like `model` in these differences, which are from the first to the second. */
function take(target, model, keys) {
    attempt(() => {
        const diff = differences(target, model);
        const wanted = diff.differences.filter((difference) => keys.has(placeKey(difference)));
        const words = `${plural(wanted.length, 'difference')} taken from ${model.name}`;
        const result = app.workspace.edit(target, words, (document) =>
            document.json('platen_apply', JSON.stringify({ ...diff, differences: wanted })));
        say(`${target.name}: ${words}.${result.misfits.length > 0
            ? ` Not possible: ${result.misfits.join('; ')}` : ''}`);
    });
}

const placeKey = (difference) => JSON.stringify(difference.place);

function Takes({ file, other, list, subject }) {
    const keys = new Set(list.map(placeKey));
    return (
        <span class="takes">
            <button type="button" aria-label={`${subject}: ${other.name} takes what ${file.name} has`}
                title={`${other.name} takes this`} onClick={() => take(other, file, keys)}>→</button>
            <button type="button" aria-label={`${subject}: ${file.name} takes what ${other.name} has`}
                title={`${file.name} takes this`} onClick={() => take(file, other, keys)}>←</button>
        </span>
    );
}

function penAt(file, place) {
    const step = place[1];
    if (!isTable(app.workspace.kind(file)) || place[0] !== 'plot_style' || typeof step !== 'object') {
        return undefined;
    }
    return pensOf(file).find((pen) => ('color' in step ? pen.number === step.color
        : pen.name === Object.values(step)[0]));
}

function Group({ file, other, list }) {
    const [left, right] = [penAt(file, list[0].place), penAt(other, list[0].place)];
    const known = left && right ? styleParts(left, right) : [];
    const parts = known.length > 0 ? known : list.map(inParts);
    const subject = left?.label ?? right?.label ?? parts[0].what;
    const takes = <Takes file={file} other={other} list={list} subject={subject} />;
    const hasHead = left !== undefined || right !== undefined || parts.length > 1;
    return (
        <tbody>
            {hasHead && (
                <tr class="group">
                    <th scope="rowgroup"><bdi>{left || right ? subject : ''}</bdi></th>
                    <td>{left && <Line pen={left} />}</td>
                    <td>{takes}</td>
                    <td>{right && <Line pen={right} />}</td>
                </tr>
            )}
            {parts.map((part, number) => (
                <tr key={number}>
                    <th scope="row" class={hasHead ? 'inner' : ''}><bdi>{part.what}</bdi></th>
                    <td><bdi>{part.before}</bdi></td>
                    <td>{!hasHead && takes}</td>
                    <td><bdi>{part.after}</bdi></td>
                </tr>
            ))}
        </tbody>
    );
}

function Result({ file, other }) {
    let diff;
    try {
        diff = differences(file, other);
    } catch (error) {
        return <p class="verdict">{error.message}</p>;
    }
    if (diff.equal) {
        return <p class="verdict good">Both mean the same.</p>;
    }
    const groups = [...gathered(diff.differences).entries()];
    const most = 400;
    return (
        <>
            <p class="verdict">{plural(groups.length, 'difference')}</p>
            <table class="compare-table">
                <thead><tr><th scope="col">What</th><th scope="col"><bdi>{file.name}</bdi></th>
                    <th scope="col">Take</th><th scope="col"><bdi>{other.name}</bdi></th></tr></thead>
                {groups.slice(0, most).map(([key, list]) =>
                    <Group key={key} file={file} other={other} list={list} />)}
            </table>
            {groups.length > most && <p class="quiet">and {groups.length - most} more</p>}
        </>
    );
}

export function Compare({ file, view }) {
    const others = app.workspace.files.filter((other) => other !== file &&
        app.workspace.kind(other) !== 'damaged');
    const other = others.find((one) => one.path === view.other) ??
        others.find((one) => app.workspace.kind(one) === app.workspace.kind(file)) ?? others[0];
    if (!other) {
        return <p class="quiet">Open another file to compare this one with.</p>;
    }
    return (
        <>
            <div class="controls inner">
                <label>Compare with <select value={other.path}
                    onChange={(event) => setView(file, { other: event.target.value })}>
                    {others.map((one) => <option key={one.path} value={one.path}>{one.name}
                        {one.name === file.name ? ' (the other one)' : ''}</option>)}
                </select></label>
            </div>
            <Result file={file} other={other} />
        </>
    );
}
