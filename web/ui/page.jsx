// The frame of the page: what can be done, the files that are open, and the one that is shown.
import { app, chooseFiles, closeFile, hasPapers, isTable, kindNames, openDialog, openFiles, redo, save, show, undo, viewOf } from './app.js';
import { About } from './about.jsx';
import { Compare } from './compare.jsx';
import { Dialogs } from './dialogs.jsx';
import { Findings, findingCount } from './findings.jsx';
import { Items } from './items.jsx';
import { LineWeights } from './lineweights.jsx';
import { Papers } from './papers.jsx';
import { Pens } from './pens.jsx';
import { moveWithin } from './keys.js';

const tabs = {
    pens: ['Pens', Pens],
    weights: ['Line weights', LineWeights],
    about: ['Settings', About],
    papers: ['Papers', Papers],
    findings: ['Findings', Findings],
    compare: ['Compare', Compare],
    items: ['All items', Items],
};

function tabsOf(file) {
    const kind = app.workspace.kind(file);
    if (kind === 'damaged') {
        return ['findings'];
    }
    return [...(isTable(kind) ? ['pens', 'weights'] : []), ...(hasPapers(kind) ? ['about', 'papers'] : []),
        'findings', 'compare', ...(isTable(kind) ? ['about'] : []), 'items'];
}

function Tool({ label, keys, onClick, disabled = false, primary = false }) {
    return (
        <button type="button" class={primary ? 'primary' : ''} aria-disabled={disabled}
            title={keys ? `${label} (${keys})` : undefined}
            onClick={disabled ? undefined : onClick}>{label}</button>
    );
}

function Header() {
    const file = app.active;
    const undoable = file && app.workspace.undoable(file);
    const redoable = file && app.workspace.redoable(file);
    return (
        <header class="bar">
            <h1>Platen</h1>
            <div class="tools" role="toolbar" aria-label="Files and changes" onKeyDown={moveWithin('button')}>
                <Tool label="Open" keys="Ctrl+O" onClick={chooseFiles} />
                <Tool label="New" onClick={() => openDialog('new')} />
                <Tool label="Save" keys="Ctrl+S" primary disabled={!file?.isChanged}
                    onClick={() => save(file)} />
                <span class="gap" />
                <Tool label="Undo" keys="Ctrl+Z" disabled={!undoable} onClick={() => undo(file)} />
                <Tool label="Redo" keys="Ctrl+Y" disabled={!redoable} onClick={() => redo(file)} />
                <span class="gap" />
                <Tool label="Print" keys="Ctrl+P" disabled={!file || app.workspace.kind(file) === 'damaged'}
                    onClick={() => openDialog('print', { file })} />
                <Tool label="Help" keys="?" onClick={() => openDialog('help')} />
            </div>
            <input id="choose-files" type="file" multiple hidden
                onChange={(event) => {
                    openFiles(event.target.files);
                    event.target.value = '';
                }} />
        </header>
    );
}

function FileTabs() {
    return (
        <nav class="files" aria-label="Open files">
            {app.workspace.files.map((file) => (
                <span key={file.path} class={file === app.active ? 'file current' : 'file'}>
                    <button type="button" aria-current={file === app.active ? 'true' : undefined}
                        onClick={() => show(file)}>
                        <span class={`kind ${app.workspace.kind(file)}`}>
                            {app.workspace.kind(file) === 'damaged' ? '?' : app.workspace.kind(file)}
                        </span>
                        <bdi>{file.name}</bdi>
                        {file.isChanged && <span class="changed" title="Not saved"> •
                            <span class="unseen"> not saved</span></span>}
                    </button>
                    <button type="button" class="close" aria-label={`Close ${file.name}`}
                        onClick={() => closeFile(file)}>×</button>
                </span>
            ))}
        </nav>
    );
}

function Empty() {
    return (
        <main class="empty">
            <h2>Drop plotter files here</h2>
            <p>Plot style tables (CTB, STB), plot configurations (PC3) and plot model parameters (PMP).</p>
            <p class="tools">
                <button type="button" class="primary" onClick={chooseFiles}>Open files</button>
                <button type="button" onClick={() => openDialog('new')}>Make a new one</button>
            </p>
            <p class="quiet">Files stay on this computer. This page sends nothing.
                Drop a PC3 and its PMP together, and they find each other.</p>
        </main>
    );
}

function FileView({ file }) {
    const view = viewOf(file);
    const names = tabsOf(file);
    const current = names.includes(view.tab) ? view.tab : names[0];
    const [title, Content] = tabs[current];
    const count = findingCount(file);
    return (
        <main class="document">
            <div class="title">
                <h2><bdi>{file.name}</bdi></h2>
                <p>{kindNames[app.workspace.kind(file)]}</p>
                <div class="tabs" role="tablist" aria-label="Parts of the file"
                    onKeyDown={moveWithin('[role=tab]')}>
                    {names.map((name) => (
                        <button type="button" role="tab" key={name} id={`tab-${name}`}
                            aria-selected={name === current} aria-controls="part"
                            tabIndex={name === current ? 0 : -1}
                            onClick={() => show(file, name)}>
                            {tabs[name][0]}
                            {name === 'findings' && count > 0 &&
                                <span class="count">{count}<span class="unseen"> found</span></span>}
                        </button>
                    ))}
                </div>
            </div>
            <section id="part" role="tabpanel" aria-labelledby={`tab-${current}`} aria-label={title}
                tabIndex={-1} class={`part part-${current}`} key={`${file.path}/${current}`}>
                <Content file={file} view={view} />
            </section>
        </main>
    );
}

function Message() {
    const { message } = app;
    return (
        <div class={message?.isError ? 'message error' : 'message'}>
            <p role="status" aria-live="polite">{message && !message.isError ? message.text : ''}</p>
            <p role="alert">{message?.isError ? message.text : ''}</p>
            {message?.isError && <button type="button" onClick={() => {
                app.message = null;
                app.render();
            }}>Close</button>}
        </div>
    );
}

export function Page() {
    return (
        <>
            <Header />
            {app.workspace.files.length > 0 && <FileTabs />}
            {app.active ? <FileView file={app.active} /> : <Empty />}
            <Message />
            <Dialogs />
        </>
    );
}
