// Every item of a file as it is stored: blocks that open, values that can be changed.
import { useState } from 'preact/hooks';
import { app, edit, setView } from './app.js';
import { Entry } from './style_form.jsx';
import { plural } from './words.js';

/** The items as a tree: {name, type, value, line, path, children}. */
export function treeOf(file) {
    return app.workspace.know(file, 'tree', () => {
        const root = { path: '', children: [] };
        const open = [root];
        for (const item of app.workspace.ask(file, 'platen_document_items').items) {
            open.length = item.depth + 1;
            const parent = open.at(-1);
            const node = { ...item, path: parent.path === '' ? item.name : `${parent.path}/${item.name}`,
                children: [] };
            parent.children.push(node);
            open.push(node);
        }
        return root;
    });
}

export const setItem = (file, path, label) => (value) => edit(file, `${label}: ${value || 'none'}`,
    (document) => document.do('platen_document_set', path, value));

/** The value of an item in the field that fits. */
export function Value({ file, item, label = item.name }) {
    const set = setItem(file, item.path, label);
    if (item.type === 'bool') {
        return <input type="checkbox" aria-label={label} checked={item.value === 'TRUE'}
            onChange={(event) => set(event.target.checked ? 'TRUE' : 'FALSE')} />;
    }
    return <Entry aria-label={label} class={item.type === 'num' ? 'number' : ''} value={item.value}
        onCommit={set} />;
}

function Row({ file, item, view, depth }) {
    const isBlock = item.type === 'block';
    const isOpen = isBlock && view.open.has(item.path);
    const toggle = () => {
        const open = new Set(view.open);
        if (!open.delete(item.path)) {
            open.add(item.path);
        }
        setView(file, { open });
    };
    return (
        <>
            <tr>
                <th scope="row" style={{ paddingLeft: `${0.5 + depth * 1.2}rem` }}>
                    {isBlock
                        ? <button type="button" class="fold" aria-expanded={isOpen} onClick={toggle}>
                            <bdi>{item.name}</bdi></button>
                        : <bdi>{item.name}</bdi>}
                </th>
                <td>{isBlock ? <span class="quiet">{plural(item.children.length, 'item')}</span>
                    : <Value file={file} item={item} label={item.path} />}</td>
                <td class="number quiet">{item.line ?? ''}</td>
                <td>
                    <button type="button" aria-label={`Remove ${item.path}`} onClick={() => edit(file,
                        `${item.path} removed`, (document) => document.do('platen_document_remove', item.path))}>
                        Remove</button>
                </td>
            </tr>
            {isOpen && item.children.map((child, number) =>
                <Row key={number} file={file} item={child} view={view} depth={depth + 1} />)}
        </>
    );
}

function matching(node, wanted, found, limit) {
    for (const child of node.children) {
        if (found.length >= limit) {
            return found;
        }
        if (child.type === 'block') {
            matching(child, wanted, found, limit);
        } else if (`${child.path} ${child.value}`.toLowerCase().includes(wanted)) {
            found.push(child);
        }
    }
    return found;
}

const types = { str: 'text', num: 'number', bool: 'yes or no', bin: 'bytes, hexadecimal', block: 'block' };

function AddItem({ file }) {
    const [type, setType] = useState('str');
    const add = (event) => {
        event.preventDefault();
        const data = new FormData(event.target);
        const path = data.get('path').trim();
        if (edit(file, `${path} added`, (document) => document.do('platen_document_set',
            `${path}:${type}`, type === 'block' ? null : data.get('value')))) {
            event.target.reset();
        }
    };
    return (
        <form class="controls add" onSubmit={add}>
            <label>New item <input name="path" required placeholder="block/name" /></label>
            <label>Kind <select value={type} onChange={(event) => setType(event.target.value)}>
                {Object.entries(types).map(([key, text]) => <option key={key} value={key}>{text}</option>)}
            </select></label>
            {type !== 'block' && <label>Value <input name="value" /></label>}
            <button type="submit">Add</button>
        </form>
    );
}

const mostFound = 300;

export function Items({ file, view }) {
    const root = treeOf(file);
    const [wanted, search] = useState('');
    const found = wanted === '' ? null : matching(root, wanted.toLowerCase(), [], mostFound);
    return (
        <>
            <div class="controls inner">
                <label>Search <input type="search" value={wanted}
                    onInput={(event) => search(event.target.value)} /></label>
                <span class="quiet">Everything as the file has it. What is not changed here stays as it is.</span>
            </div>
            <table class="items">
                <thead><tr><th scope="col">Item</th><th scope="col">Value</th>
                    <th scope="col" class="number">Line</th><th scope="col"><span class="unseen">Remove</span></th>
                </tr></thead>
                <tbody>
                    {found === null
                        ? root.children.map((item, number) =>
                            <Row key={number} file={file} item={item} view={view} depth={0} />)
                        : found.map((item) => <Row key={item.path} file={file} view={view} depth={0}
                            item={{ ...item, name: item.path }} />)}
                </tbody>
            </table>
            {found?.length === mostFound && <p class="quiet">There are more; search for more letters.</p>}
            <AddItem file={file} />
        </>
    );
}
