// Pens as swatches or as a table, from which they are selected by mouse and by keys.
import { Component } from 'preact';
import { useLayoutEffect, useRef } from 'preact/hooks';
import { app, attempt, say, setView } from './app.js';
import { columnsOf } from './keys.js';
import { pensOf } from './pens.js';
import { plural } from './words.js';

const millimetres = (weight) => (weight === null ? 'object’s' : weight.toFixed(2));

const pixelsPerMillimetre = 96 / 25.4;

/** Paper with the colour as plotted and a line at its true weight; the object's weight is dashed. One
 *  shape, since there are hundreds of them. */
export function Line({ pen }) {
    const weight = (pen.weight ?? 0.25) * pixelsPerMillimetre;
    const top = 9.5 - weight / 2;
    const piece = (left, width) => `M${left} ${top}h${width}v${weight}h${-width}z`;
    const line = pen.weight === null
        ? [20, 29, 38, 47, 56].map((left) => piece(left, 6)).join('') : piece(20, 999);
    return (
        <svg class="line" aria-hidden="true">
            <path d={pen.shown === null ? line : `M0 0h15v19H0z${line}`} fill={pen.shown ?? '#6f6f6f'} />
        </svg>
    );
}

/** What is to be known beside number, name and weight. */
const describe = (pen) => [pen.shown === null ? 'the object’s colour' : `plots ${pen.shown}`,
    pen.screening !== '100' && `${pen.screening} % screening`, pen.grayscale === 'on' && 'grayscale',
    pen.description].filter(Boolean).join(', ');

/** Draws itself again only when its own pen is different. */
class Item extends Component {
    shouldComponentUpdate(next) {
        return next.words !== this.props.words || next.pen.weight !== this.props.pen.weight ||
            next.pen.short !== this.props.pen.short || next.selected !== this.props.selected ||
            next.current !== this.props.current || next.layout !== this.props.layout;
    }

    render({ pen, selected, current, layout, words }) {
        const common = { 'data-number': pen.number, 'aria-selected': selected, tabIndex: current ? 0 : -1,
            class: 'pen' };
        if (layout === 'grid') {
            return (
                <div role="option" title={words} {...common}
                    aria-label={`${pen.short} ${millimetres(pen.weight)} ${pen.weight === null ? 'line weight' : 'mm'}, ${words}`}>
                    <span class="name" dir="auto">{pen.short}</span>{' '}
                    <span class="weight">{pen.weight === null ? 'object' : millimetres(pen.weight)}</span>
                    <Line pen={pen} />
                </div>
            );
        }
        return (
            <tr {...common}>
                <td class="number">{pen.number}</td>
                <th scope="row"><bdi>{pen.localized_name || pen.name}</bdi></th>
                <td><span class="chip" style={{ background: pen.shown ?? 'transparent' }} />{pen.color}</td>
                <td class="number">{millimetres(pen.weight)}</td>
                <td class="drawn"><Line pen={pen} /></td>
                <td class="number">{pen.screening}</td>
                <td>{pen.grayscale === 'on' ? 'gray' : ''}</td>
                <td class="description"><bdi>{pen.description}</bdi></td>
            </tr>
        );
    }
}

/** What keys and clicks do with the selection. */
function selectTo(file, view, pens, number, { range = false, toggle = false, keep = false }) {
    let selected = new Set([number]);
    let anchor = number;
    if (range) {
        const numbers = pens.map((pen) => pen.number);
        const from = Math.max(numbers.indexOf(view.anchor), 0);
        const to = numbers.indexOf(number);
        selected = new Set(numbers.slice(Math.min(from, to), Math.max(from, to) + 1));
        anchor = view.anchor;
    } else if (toggle) {
        selected = new Set(view.selected);
        if (!selected.delete(number)) {
            selected.add(number);
        }
    } else if (keep) {
        selected = view.selected;
    }
    setView(file, { selected, anchor, cursor: number });
}

export function selectEqual(file, number) {
    const pen = pensOf(file).find((other) => other.number === number);
    const text = app.workspace.kind(file) === 'ctb' ? `=${number}` : `=${pen.name}`;
    const { styles } = app.workspace.ask(file, 'platen_styles', text);
    setView(file, { selected: new Set(styles.map((style) => style.number)), anchor: number });
    say(`${plural(styles.length, 'pen is', 'pens are')} like ${pen.label}.`);
}

export function PenList({ file, view, pens }) {
    const list = useRef();
    const byKeys = useRef(false);
    const cursor = pens.some((pen) => pen.number === view.cursor) ? view.cursor : pens[0]?.number;
    useLayoutEffect(() => {
        if (byKeys.current) {
            byKeys.current = false;
            list.current.querySelector('[tabindex="0"]')?.focus();
        }
    });
    const press = (event) => {
        const place = pens.findIndex((pen) => pen.number === cursor);
        const columns = view.layout === 'grid' ? Math.max(columnsOf(list.current), 1) : 1;
        const moves = { ArrowLeft: -1, ArrowRight: 1, ArrowUp: -columns, ArrowDown: columns,
            Home: -place, End: pens.length - 1 - place, PageUp: -5 * columns, PageDown: 5 * columns };
        const control = event.ctrlKey || event.metaKey;
        if (event.key in moves) {
            const to = pens[Math.min(Math.max(place + moves[event.key], 0), pens.length - 1)];
            byKeys.current = true;
            selectTo(file, view, pens, to.number, { range: event.shiftKey, keep: control });
        } else if (event.key === ' ') {
            selectTo(file, view, pens, cursor, { toggle: true });
        } else if (event.key === 'a' && control) {
            setView(file, { selected: new Set(pens.map((pen) => pen.number)) });
        } else if (event.key === '=' && !control) {
            attempt(() => selectEqual(file, cursor));
        } else if (event.key === 'Escape') {
            setView(file, { selected: new Set([cursor]), anchor: cursor });
        } else if (event.key === 'Enter') {
            document.querySelector('.form select, .form input')?.focus();
        } else {
            return;
        }
        event.preventDefault();
    };
    const click = (event) => {
        const number = Number(event.target.closest('[data-number]')?.dataset.number);
        if (number) {
            byKeys.current = true;
            selectTo(file, view, pens, number,
                { range: event.shiftKey, toggle: event.ctrlKey || event.metaKey });
        }
    };
    const items = pens.map((pen) => (
        <Item key={pen.number} pen={pen} words={describe(pen)} layout={view.layout}
            selected={view.selected.has(pen.number)} current={pen.number === cursor} />
    ));
    if (pens.length === 0) {
        return <p class="quiet none">No pen is like that. Change what is searched for, or show all.</p>;
    }
    if (view.layout === 'grid') {
        return (
            <div class={app.workspace.kind(file) === 'ctb' ? 'grid' : 'grid named'} role="listbox"
                aria-multiselectable="true" aria-label="Pens" ref={list} onKeyDown={press} onClick={click}>
                {items}
            </div>
        );
    }
    return (
        <div class="scroll">
            <table class="pens-table" role="grid" aria-multiselectable="true" aria-label="Pens">
                <thead><tr>
                    <th scope="col" class="number">No.</th><th scope="col">Name</th>
                    <th scope="col">Colour</th><th scope="col" class="number">Weight, mm</th>
                    <th scope="col">Line</th><th scope="col" class="number">Screening, %</th>
                    <th scope="col">Gray</th><th scope="col">Description</th>
                </tr></thead>
                <tbody ref={list} onKeyDown={press} onClick={click}>{items}</tbody>
            </table>
        </div>
    );
}
