// Pens as people see them: colours as plotted, weights as lengths, ranges of numbers.
import { app } from './app.js';

/** "1–9, 250" of ascending numbers. */
export function inRanges(numbers, dash = '–', comma = ', ') {
    const parts = [];
    for (let place = 0; place < numbers.length; ++place) {
        const first = numbers[place];
        while (numbers[place + 1] === numbers[place] + 1) {
            ++place;
        }
        parts.push(first === numbers[place] ? `${first}` : `${first}${dash}${numbers[place]}`);
    }
    return parts.join(comma);
}

const once = new Map();
function constant(key, work) {
    if (!once.has(key)) {
        once.set(key, work());
    }
    return once.get(key);
}

export const settings = () =>
    constant('settings', () => app.workspace.engine.list('platen_style_settings').settings);
export const palette = () =>
    constant('palette', () => app.workspace.engine.list('platen_palette').colors);
export const presets = () =>
    constant('presets', () => app.workspace.engine.list('platen_presets').presets);
export const devices = () =>
    constant('devices', () => app.workspace.engine.list('platen_devices').devices);

/** A style that nobody has changed. */
export const fresh = () => constant('fresh', () => {
    const handle = app.workspace.engine.createTable('ctb', null);
    const [style] = handle.json('platen_styles', '1').styles;
    handle.destroy();
    return style;
});

const channels = (color) => [1, 3, 5].map((place) => parseInt(color.slice(place, place + 2), 16));
const hex = (values) => `#${values.map((value) => value.toString(16).padStart(2, '0')).join('')}`;

/** The colour that a style says, before it becomes gray or light; null for the object's own. */
function ownColor(style, byColour) {
    if (style.color === 'object') {
        return byColour ? palette()[style.number - 1] ?? null : null;
    }
    const index = /^index:(\d+)$/.exec(style.color);
    return index ? palette()[Number(index[1]) - 1] : style.color.slice(0, 7);
}

function plottedColor(style, byColour) {
    const own = ownColor(style, byColour);
    if (own === null) {
        return null;
    }
    let values = channels(own);
    if (style.grayscale === 'on') {
        const [red, green, blue] = values;
        values = Array(3).fill(Math.round(0.299 * red + 0.587 * green + 0.114 * blue));
    }
    const kept = Math.min(Math.max(Number(style.screening), 0), 100) / 100;
    return hex(values.map((value) => Math.trunc(255 - (255 - value) * kept)));
}

export const weightOf = (style) =>
    style.lineweight.endsWith(' mm') ? Number.parseFloat(style.lineweight) : null;

/** The styles of a table with what is needed to draw them. */
export function pensOf(file) {
    return app.workspace.know(file, 'pens', () => {
        const byColour = app.workspace.kind(file) === 'ctb';
        const standard = fresh();
        return app.workspace.ask(file, 'platen_styles').styles.map((style) => ({
            ...style,
            label: byColour ? `Pen ${style.number}` : style.localized_name || style.name,
            short: byColour ? `${style.number}` : style.localized_name || style.name,
            own: ownColor(style, byColour),
            shown: plottedColor(style, byColour),
            weight: weightOf(style),
            differs: settings().filter(({ word }) => style[word] !== standard[word])
                .map(({ word }) => word),
        }));
    });
}

/** Words that name exactly these styles, whatever names the table has. */
export function selectionText(file, numbers) {
    const names = app.workspace.kind(file) === 'ctb' ? new Set()
        : new Set(pensOf(file).flatMap((pen) => [pen.name, pen.label]).map((name) => name.toLowerCase()));
    let text = inRanges(numbers, '-', ',');
    while (names.has(text)) {
        text += `,${numbers[0]}`;
    }
    return text;
}

const hueOf = (color) => {
    if (color === null) {
        return 2;
    }
    const [red, green, blue] = channels(color);
    const most = Math.max(red, green, blue);
    const spread = most - Math.min(red, green, blue);
    if (spread < 8) {
        return 1 + most / 256;
    }
    const sixth = most === red ? ((green - blue) / spread + 6) % 6
        : most === green ? (blue - red) / spread + 2 : (red - green) / spread + 4;
    return sixth / 6;
};

export const sorts = {
    number: ['Number', (pen) => pen.number],
    name: ['Name', (pen) => pen.label.toLowerCase()],
    weight: ['Line weight', (pen) => pen.weight ?? -1],
    color: ['Plotted colour', (pen) => hueOf(pen.shown)],
    screening: ['Screening', (pen) => Number(pen.screening)],
};

export const filters = {
    all: 'All',
    changed: 'Not standard',
    described: 'With a description',
    selected: 'Selected',
};

export function shownPens(file, view) {
    const wanted = view.search.trim().toLowerCase();
    const [, key] = sorts[view.sort];
    const kept = pensOf(file).filter((pen) => {
        const passes = view.filter === 'all' ||
            (view.filter === 'changed' && pen.differs.length > 0) ||
            (view.filter === 'described' && pen.description !== '') ||
            (view.filter === 'selected' && view.selected.has(pen.number));
        return passes && (wanted === '' || `${pen.number}` === wanted ||
            [pen.label, pen.description, pen.color, pen.shown ?? '', pen.lineweight]
                .some((text) => text.toLowerCase().includes(wanted)));
    });
    return kept.sort((one, other) => {
        const [first, second] = [key(one), key(other)];
        return first < second ? -1 : first > second ? 1 : one.number - other.number;
    });
}
