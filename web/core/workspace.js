// The files that are open, and what was done to them. A state is the bytes of a file: a step keeps
// those before and after it, so that undoing is exact and without limit. No browser is needed here.
import { RestartedError } from './engine.js';

const folderName = (number) => (number === 0 ? '/opened files' : `/opened files ${number + 1}`);
const baseName = (path) => path.split(/[/\\]/).pop();
const equalBytes = (one, other) =>
    one.length === other.length && one.every((byte, place) => byte === other[place]);

const nameOfParameters = 'meta/user_defined_model_pathname';

/** What a folder cannot hold in a name becomes a hyphen; the name for people stays. */
const storedName = (name) => name.replaceAll(/[/\0]/gu, '-') || 'file';

export class OpenFile {
    /** Of the person's own file, where the browser gives one. */
    source = null;
    /** Bytes when it was opened or saved last; null for a file that never was. */
    saved = null;
    steps = [];
    undone = [];
    /** What was asked about the present bytes. */
    known = new Map();
    handle = null;

    constructor(path, name, bytes) {
        Object.assign(this, { path, name, bytes });
    }

    get isChanged() { return this.saved === null || !equalBytes(this.saved, this.bytes); }
}

export class Workspace {
    files = [];
    onChange = () => {};
    /** Told what happened apart from what was asked for. */
    onNotice = () => {};
    #engine;

    constructor(engine) {
        this.#engine = engine;
        engine.onRestart = () => {
            for (const file of this.files) {
                file.handle = null;
            }
        };
    }

    get engine() { return this.#engine; }

    // --- Files ---

    /** Opens files that came together: {name, bytes, source}. They share a folder, so that a
     *  configuration finds its parameters. */
    add(items) {
        const names = items.map((item) => storedName(item.name));
        let number = 0;
        const taken = () => names.some((name, place) =>
            names.findIndex((other) => other.toLowerCase() === name.toLowerCase()) === place &&
            this.#isTaken(`${folderName(number)}/${name}`));
        while (taken()) {
            ++number;
        }
        const opened = items.map((item, place) => {
            let path = `${folderName(number)}/${names[place]}`;
            for (let next = number; this.#isTaken(path);) {
                path = `${folderName(++next)}/${names[place]}`;
            }
            this.#engine.files.write(path, item.bytes);
            const file = new OpenFile(path, item.name, item.bytes);
            file.source = item.source ?? null;
            file.saved = item.isNew ? null : item.bytes;
            return file;
        });
        this.files.push(...opened);
        this.#forgetConfigurations();
        this.onChange();
        return opened;
    }

    /** A file that an undone step has made comes back to its place. */
    #isTaken(path) {
        return this.#engine.files.has(path) || this.files.some((file) => file.undone.some((step) =>
            step.changes.some((change) => change.file.path === path)));
    }

    /** A new file of what a handle holds, which is given back. */
    addNew(name, handle) {
        const bytes = handle.bytes('platen_document_bytes');
        handle.destroy();
        return this.add([{ name, bytes, isNew: true }])[0];
    }

    close(file) {
        this.#drop(file);
        this.#engine.files.remove(file.path);
        this.files = this.files.filter((other) => other !== file);
        this.#forgetConfigurations();
        this.onChange();
    }

    wasSaved(file) {
        file.saved = file.bytes;
        this.onChange();
    }

    /** The document of a file; throws why there is none. */
    document(file) {
        file.handle ??= this.#engine.open(file.bytes, file.path);
        return file.handle;
    }

    /** What a function of the file's document says, asked once for each state. */
    ask(file, name, ...values) {
        return this.know(file, `${name} ${JSON.stringify(values)}`,
            () => this.document(file).json(name, ...values));
    }

    know(file, key, work) {
        if (!file.known.has(key)) {
            file.known.set(key, work());
        }
        return file.known.get(key);
    }

    kind(file) {
        return this.know(file, 'kind', () => {
            try {
                return this.document(file).kind;
            } catch {
                return 'damaged';
            }
        });
    }

    // --- Changes ---

    /** Changes the file's document as `work` does, or not at all. `words` says what was done. */
    edit(file, words, work) {
        let result;
        try {
            const handle = this.document(file);
            result = work(handle);
            this.#step(words, file, [[file, handle.bytes('platen_document_bytes')]], [file]);
        } catch (error) {
            this.#drop(file);
            throw error;
        }
        return result;
    }

    /** Takes a document in place of the file's, such as a repaired one. */
    replace(file, words, handle) {
        const bytes = handle.bytes('platen_document_bytes');
        handle.destroy();
        this.#step(words, file, [[file, bytes]]);
    }

    /** Changes custom papers; a configuration and its parameters may both become different. */
    editPapers(file, words, work) {
        const papers = this.#engine.papers(file.path);
        let written;
        try {
            work(papers);
            written = papers.json('platen_papers_save');
        } catch (error) {
            this.#restoreFiles();
            if (!(error instanceof RestartedError)) {
                papers.destroy();
            }
            throw error;
        }
        papers.destroy();
        const changes = [];
        for (const document of [written.parameters, written.configuration]) {
            if (document !== null) {
                const known = this.files.find((other) => other.path === document.path);
                changes.push([known ?? this.#unopened(document.path),
                    this.#engine.files.read(document.path)]);
            }
        }
        this.#keepNameOfParameters(changes);
        this.#step(words, file, changes);
        return written;
    }

    /** A file that the module has made beside the others. */
    #unopened(path) {
        const file = new OpenFile(path, baseName(path), null);
        return file;
    }

    /** Here nobody knows the folder of the person's files, so both files go on naming the parameters as
     *  they did, or by their name alone: they are looked for beside the configuration. */
    #keepNameOfParameters(changes) {
        for (const change of changes) {
            const [file, bytes] = change;
            const now = this.#engine.open(bytes, file.path);
            const named = this.#nameIn(now);
            const before = file.bytes ? this.#nameIn(this.document(file)) : '';
            if (named !== '') {
                const isSame = baseName(before).toLowerCase() === baseName(named).toLowerCase();
                now.do('platen_document_set', nameOfParameters, isSame ? before : baseName(named));
                change[1] = now.bytes('platen_document_bytes');
            }
            now.destroy();
        }
    }

    #nameIn(handle) {
        try {
            return handle.text('platen_document_get', nameOfParameters);
        } catch (error) {
            if (error instanceof RestartedError) {
                throw error;
            }
            return '';
        }
    }

    #restoreFiles() {
        for (const file of this.files) {
            this.#engine.files.write(file.path, file.bytes);
        }
    }

    /** Notes what is different after something was done in `file`; the documents of `current` files are
     *  the new state already. */
    #step(words, file, changes, current = []) {
        const step = { words, changes: changes
            .filter(([other, bytes]) => other.bytes === null || !equalBytes(other.bytes, bytes))
            .map(([other, after]) => ({ file: other, before: other.bytes, after })) };
        step.files = new Set([file, ...step.changes.map((change) => change.file)]);
        if (step.changes.length > 0) {
            this.#become(step, 'after', current);
            for (const other of step.files) {
                other.steps.push(step);
                other.undone = [];
            }
        }
        this.onChange();
    }

    #become(step, side, current = []) {
        for (const change of step.changes) {
            const { file } = change;
            if (!current.includes(file)) {
                this.#drop(file);
            }
            file.known.clear();
            file.bytes = change[side];
            if (file.bytes === null) {
                this.#engine.files.remove(file.path);
                this.files = this.files.filter((other) => other !== file);
            } else {
                this.#engine.files.write(file.path, file.bytes);
                if (!this.files.includes(file)) {
                    this.files.push(file);
                }
            }
        }
        this.#forgetConfigurations();
    }

    /** What would be undone in this file; a step of two files only when both have it last. */
    undoable(file) { return Workspace.#last(file, 'steps'); }
    redoable(file) { return Workspace.#last(file, 'undone'); }

    static #last(file, list) {
        const step = file[list].at(-1);
        return step && [...step.files].every((other) => other[list].at(-1) === step) ? step : undefined;
    }

    undo(file) { return this.#move(this.undoable(file), 'steps', 'undone', 'before'); }
    redo(file) { return this.#move(this.redoable(file), 'undone', 'steps', 'after'); }

    #move(step, from, to, side) {
        if (step) {
            for (const other of step.files) {
                other[from].pop();
                other[to].push(step);
            }
            this.#become(step, side);
            this.onChange();
        }
        return step;
    }

    #drop(file) {
        file.handle?.destroy();
        file.handle = null;
    }

    /** What is known of a configuration rests on its parameters. */
    #forgetConfigurations() {
        for (const file of this.files) {
            if (this.kind(file) === 'pc3') {
                file.known.clear();
            }
        }
    }
}
