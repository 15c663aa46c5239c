// Starts the module and shows the page.
import { render } from 'preact';
import { Engine } from '../core/engine.js';
import { app, attempt, chooseFiles, openDialog, openDropped, openItems, redo, save, start, undo }
    from './app.js';
import { Page } from './page.jsx';
import { fresh, palette, presets, settings } from './pens.js';

const decode = (text) => Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));

async function compiled() {
    const inside = document.getElementById('platen-module');
    if (inside === null) {
        // Servers that do not know the type of modules serve it all the same.
        return WebAssembly.compile(await (await fetch('platen.wasm')).arrayBuffer());
    }
    const packed = new Blob([decode(inside.textContent)]).stream();
    inside.remove();
    const stream = packed.pipeThrough(new DecompressionStream('gzip'));
    return WebAssembly.compile(await new Response(stream).arrayBuffer());
}

/** Files that came within the page: [{name, base64}]. */
const embedded = () => JSON.parse(document.getElementById('platen-files').textContent)
    .map((file) => ({ name: file.name, bytes: decode(file.base64) }));

const shortcuts = {
    o: () => chooseFiles(),
    s: () => app.active && save(app.active),
    z: (event) => app.active && (event.shiftKey ? redo(app.active) : undo(app.active)),
    y: () => app.active && redo(app.active),
    p: () => app.active && openDialog('print', { file: app.active }),
};

function listen() {
    document.addEventListener('keydown', (event) => {
        if (app.dialog !== null) {
            return;
        }
        const isField = event.target.matches('input:not([type=checkbox]), textarea');
        const key = event.key.toLowerCase();
        if ((event.ctrlKey || event.metaKey) && !event.altKey && key in shortcuts &&
            !(isField && (key === 'z' || key === 'y'))) {
            event.preventDefault();
            shortcuts[key](event);
        } else if (event.key === '?' && !isField) {
            event.preventDefault();
            openDialog('help');
        }
    });
    const body = document.body;
    body.addEventListener('dragover', (event) => {
        event.preventDefault();
        body.classList.add('dropping');
    });
    body.addEventListener('dragleave', (event) => {
        if (event.relatedTarget === null) {
            body.classList.remove('dropping');
        }
    });
    body.addEventListener('drop', (event) => {
        event.preventDefault();
        body.classList.remove('dropping');
        openDropped(event.dataTransfer);
    });
    window.addEventListener('beforeunload', (event) => {
        if (app.workspace.files.some((file) => file.isChanged)) {
            event.preventDefault();
        }
    });
}

/** Calls what the first table will need, which browsers compile when it is called first. */
function warmUp() {
    const { engine } = app.workspace;
    palette();
    presets();
    settings();
    fresh();
    const handle = engine.createTable('ctb', null);
    handle.json('platen_styles', null);
    handle.json('platen_lineweights');
    handle.json('platen_document_findings');
    handle.destroy();
}

async function main() {
    const place = document.getElementById('page');
    try {
        start(new Engine(await compiled()));
    } catch (error) {
        console.error(error);
        place.textContent = 'This browser cannot run the page. It needs a browser of 2023 or later.';
        return;
    }
    place.textContent = '';
    app.render = () => {
        document.title = app.active ? `${app.active.name} – Platen` : 'Platen';
        render(<Page />, place);
    };
    app.render();
    listen();
    const files = embedded();
    if (files.length > 0) {
        attempt(() => openItems(files));
    }
    setTimeout(() => attempt(warmUp));
    // For whoever measures or tests the page.
    window.platen = Object.assign(app, { openItems });
}

main();
