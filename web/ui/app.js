// What the page knows, and what people do with it. Components read this and call these functions.
import { Workspace } from '../core/workspace.js';
import { PlatenError } from '../core/engine.js';

export const kindNames = {
    ctb: 'Colour-dependent plot style table',
    stb: 'Named plot style table',
    pc3: 'Plot configuration',
    pmp: 'Plot model parameters',
    pia: 'Plotter file of another kind',
    damaged: 'Damaged, or no plotter file',
};
export const isTable = (kind) => kind === 'ctb' || kind === 'stb';
export const hasPapers = (kind) => kind === 'pc3' || kind === 'pmp';

export const app = {
    workspace: null,
    /** The file that is shown, null for none. */
    active: null,
    /** {name, ...} of the dialog that is open. */
    dialog: null,
    /** {text, isError}: what happened last. */
    message: null,
    /** Shows everything as it is now; main.jsx has it. */
    render() {},
};

export function start(engine) {
    app.workspace = new Workspace(engine);
    app.workspace.onChange = () => {
        if (!app.workspace.files.includes(app.active)) {
            app.active = app.workspace.files.at(-1) ?? null;
        }
        app.render();
    };
}

// --- Saying ---

export function say(text) {
    app.message = { text, isError: false };
    app.render();
}

export function complain(error) {
    const known = error instanceof PlatenError || error.name === 'RestartedError';
    const text = [error.message, error.remedy && `What to do: ${error.remedy}.`,
        error.present?.length > 0 && `There are: ${error.present.slice(0, 12).join(', ')}.`]
        .filter(Boolean).join(' ');
    app.message = { text: known ? sentence(text) : `This did not work: ${text}`, isError: true };
    if (!known) {
        console.error(error);
    }
    app.render();
}

export const sentence = (text) =>
    text.charAt(0).toUpperCase() + text.slice(1) + (/[.!?]$/.test(text) ? '' : '.');

/** Does something that may fail; what was wrong is said. Undefined after that. */
export function attempt(work) {
    try {
        return work();
    } catch (error) {
        complain(error);
        return undefined;
    }
}

export async function attemptLater(work) {
    try {
        return await work();
    } catch (error) {
        if (error.name !== 'AbortError') {
            complain(error);
        }
        return undefined;
    }
}

// --- Files ---

/** How a file is looked at: the tab, what is selected, what is searched for. */
const views = new WeakMap();

export function viewOf(file) {
    if (!views.has(file)) {
        views.set(file, { tab: null, selected: new Set([1]), cursor: 1, anchor: 1, layout: 'grid',
            search: '', filter: 'all', sort: 'number', paper: null, open: new Set(), other: null });
    }
    return views.get(file);
}

export function setView(file, changes) {
    Object.assign(viewOf(file), changes);
    app.render();
}

export function show(file, tab) {
    app.active = file;
    if (tab) {
        viewOf(file).tab = tab;
    }
    app.message = null;
    app.render();
}

export function openItems(items) {
    if (items.length === 0) {
        say('Drop files here; folders are not opened.');
        return;
    }
    attempt(() => {
        const [first] = app.workspace.add(items);
        app.dialog = null;
        show(first);
        const names = items.map((item) => item.name).join(', ');
        say(items.length === 1 ? `${names} is open.` : `${items.length} files are open: ${names}`);
    });
}

const itemOf = async (file, source) =>
    ({ name: file.name, bytes: new Uint8Array(await file.arrayBuffer()), source });

export const openFiles = (files) => attemptLater(async () =>
    openItems(await Promise.all([...files].map((file) => itemOf(file, null)))));

const openHandles = async (handles) =>
    openItems(await Promise.all(handles.map(async (handle) => itemOf(await handle.getFile(), handle))));

export function chooseFiles() {
    if (window.showOpenFilePicker) {
        attemptLater(async () => openHandles(await window.showOpenFilePicker({ multiple: true })));
    } else {
        document.getElementById('choose-files').click();
    }
}

/** Files that were dropped, with their handles where the browser has any. */
export function openDropped(transfer) {
    const items = [...transfer.items].filter((item) => item.kind === 'file');
    // All has to be asked for before anything is waited for.
    const pairs = items.map((item) =>
        [item.getAsFile(), item.getAsFileSystemHandle?.().catch(() => null)]);
    return attemptLater(async () => openItems((await Promise.all(pairs.map(async ([file, handle]) => {
        const source = await handle;
        return source?.kind === 'directory' || file === null ? null
            : itemOf(file, source?.getFile ? source : null);
    }))).filter(Boolean)));
}

export function closeFile(file) {
    if (!file.isChanged || confirm(`${file.name} has changes that are not saved. Close it anyway?`)) {
        attempt(() => app.workspace.close(file));
        say(`${file.name} is closed.`);
    }
}

export function download(name, bytes, type = 'application/octet-stream') {
    const link = document.createElement('a');
    link.href = URL.createObjectURL(new Blob([bytes], { type }));
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

const sameBytes = (one, other) =>
    one.length === other.length && one.every((byte, place) => byte === other[place]);

async function writeTo(file, source) {
    const { bytes } = file;
    const now = new Uint8Array(await (await source.getFile()).arrayBuffer());
    if (source === file.source && file.saved !== null && !sameBytes(now, file.saved) &&
        !confirm(`${file.name} was changed by another program meanwhile. Replace that?`)) {
        return;
    }
    const stream = await source.createWritable();
    await stream.write(bytes);
    await stream.close();
    file.source = source;
    app.workspace.wasSaved(file, bytes);
    say(`${source.name ?? file.name} is saved.`);
}

export const save = (file) => attemptLater(async () => {
    if (file.source) {
        await writeTo(file, file.source);
    } else if (window.showSaveFilePicker) {
        await writeTo(file, await window.showSaveFilePicker({ suggestedName: file.name }));
    } else {
        download(file.name, file.bytes);
        app.workspace.wasSaved(file, file.bytes);
        say(`${file.name} is in the folder of your downloads.`);
    }
});

// --- Changes ---

/** Changes the document of a file, and says so. True when it was changed. */
export function edit(file, words, work) {
    return attempt(() => {
        app.workspace.edit(file, words, work);
        say(`${sentence(words)}`);
        return true;
    }) ?? false;
}

export function undo(file) {
    const step = app.workspace.undo(file);
    if (step) {
        say(`Undone: ${step.words}.`);
    } else if (file.steps.length > 0) {
        say('Undo the later change of the other file first.');
    }
}

export function redo(file) {
    const step = app.workspace.redo(file);
    if (step) {
        say(`Done again: ${step.words}.`);
    }
}

export function openDialog(name, more = {}) {
    app.dialog = { name, ...more };
    app.render();
}

export function closeDialog() {
    app.dialog = null;
    app.render();
}
