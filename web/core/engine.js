// The C functions of Platen (include/platen/platen.h) as a browser calls them: texts and bytes in,
// objects and bytes out. Everything that knows files is behind them.
import { Directory, File, OpenFile, PreopenDirectory, WASI } from '@bjorn3/browser_wasi_shim';

/** Why a function failed: what platen_context_error says. */
export class PlatenError extends Error {
    constructor(error) {
        super(error.message || 'this cannot be done');
        this.name = 'PlatenError';
        Object.assign(this, { code: error.code, remedy: error.remedy, place: error.place,
            present: error.present ?? [] });
    }
}

/** The module ran out of memory or failed; it was started anew, and the files are as they were. */
export class RestartedError extends Error {
    constructor(cause) {
        super('That was more than the browser gives memory for, or it is a fault of this page. ' +
            'All files are as they were before.', { cause });
        this.name = 'RestartedError';
    }
}

/** Names as Windows has them, where PMP and pmp are the same. */
class FolderEntries extends Map {
    #spelled(name) {
        if (super.has(name)) {
            return name;
        }
        const folded = name.toLowerCase();
        return [...super.keys()].find((key) => key.toLowerCase() === folded) ?? name;
    }

    get(name) { return super.get(this.#spelled(name)); }
    has(name) { return super.has(this.#spelled(name)); }
    set(name, entry) { return super.set(this.#spelled(name), entry); }
    delete(name) { return super.delete(this.#spelled(name)); }
}

/** A folder that says that everything is allowed in it; others cannot be written in. */
class RootFolder extends PreopenDirectory {
    fd_fdstat_get() {
        const answer = super.fd_fdstat_get();
        answer.fdstat.fs_rights_base = answer.fdstat.fs_rights_inherited = (1n << 30n) - 1n;
        return answer;
    }
}

/** The files that the module sees; none of the person's own. */
export class FileSystem {
    root = new RootFolder('/', new Map());

    #folder(path, make) {
        const [, folder] = path.split('/');
        const folders = this.root.dir.contents;
        if (make && !folders.has(folder)) {
            folders.set(folder, new Directory(new FolderEntries()));
        }
        return folders.get(folder)?.contents;
    }

    static #name(path) { return path.split('/').pop(); }

    has(path) { return this.#folder(path)?.has(FileSystem.#name(path)) ?? false; }
    read(path) { return this.#folder(path)?.get(FileSystem.#name(path))?.data.slice(); }

    write(path, bytes) {
        this.#folder(path, true).set(FileSystem.#name(path), new File(bytes.slice()));
    }

    remove(path) { this.#folder(path)?.delete(FileSystem.#name(path)); }
}

const encoder = new TextEncoder();
const decoder = new TextDecoder();

/** One running module. Arguments of its functions: texts, numbers, null, Float64Array, and
 *  Uint8Array, which goes in as its address and its size. */
export class Engine {
    files = new FileSystem();
    /** Told when the module was started anew, after which all handles are void. */
    onRestart = () => {};
    #module;
    #exports;
    #context;

    constructor(module) {
        this.#module = module;
        this.#start();
    }

    #start() {
        const wasi = new WASI([], [], [new OpenFile(new File([])), new OpenFile(new File([])),
            new OpenFile(new File([])), this.files.root], { debug: false });
        const instance = new WebAssembly.Instance(this.#module,
            { wasi_snapshot_preview1: wasi.wasiImport });
        wasi.initialize(instance);
        this.#exports = instance.exports;
        this.#context = this.#exports.platen_context_create();
    }

    has(name) { return name in this.#exports; }

    #put(bytes) {
        const address = this.#exports.malloc(bytes.byteLength + 1);
        if (address === 0) {
            throw new RangeError('no memory');
        }
        const memory = new Uint8Array(this.#exports.memory.buffer);
        memory.set(new Uint8Array(bytes.buffer, bytes.byteOffset, bytes.byteLength), address);
        memory[address + bytes.byteLength] = 0;
        return address;
    }

    #text(address) {
        const memory = new Uint8Array(this.#exports.memory.buffer);
        return decoder.decode(memory.subarray(address, memory.indexOf(0, address)));
    }

    /** Runs something that calls the module; what ends the module starts it anew. */
    #guarded(work) {
        try {
            return work();
        } catch (error) {
            if (error instanceof PlatenError) {
                throw error;
            }
            this.#start();
            this.onRestart();
            throw new RestartedError(error);
        }
    }

    /** What the function returns: a number or an address. */
    call(name, ...values) {
        return this.#guarded(() => {
            const owned = [];
            const own = (bytes) => {
                owned.push(this.#put(bytes));
                return owned.at(-1);
            };
            const raw = values.flatMap((value) => {
                if (value === null || value === undefined) {
                    return 0;
                }
                if (typeof value === 'string') {
                    return own(encoder.encode(value));
                }
                if (value instanceof Uint8Array) {
                    return [own(value), value.byteLength];
                }
                return value instanceof Float64Array ? own(value) : value;
            });
            const result = this.#exports[name](...raw);
            owned.forEach((address) => this.#exports.free(address));
            return result;
        });
    }

    /** The same, for functions whose 0 is a failure. */
    do(name, ...values) {
        const result = this.call(name, ...values);
        if (result === 0) {
            throw this.error();
        }
        return result;
    }

    error() {
        const text = this.#text(this.#exports.platen_context_error(this.#context));
        return new PlatenError(text === '' ? {} : JSON.parse(text));
    }

    /** The bytes of a buffer, which is given back. */
    take(buffer) {
        return this.#guarded(() => {
            const { memory, platen_buffer_data: data, platen_buffer_size: size } = this.#exports;
            const begin = data(buffer);
            const bytes = new Uint8Array(memory.buffer).slice(begin, begin + size(buffer));
            this.#exports.platen_buffer_destroy(buffer);
            return bytes;
        });
    }

    bytes(name, ...values) { return this.take(this.do(name, ...values)); }
    text(name, ...values) { return decoder.decode(this.bytes(name, ...values)); }
    json(name, ...values) { return JSON.parse(this.text(name, ...values)); }

    /** The result of a function that also fills a buffer, and what that says, if it was filled. */
    withReport(name, ...values) {
        const place = this.#guarded(() => this.#put(new Uint8Array(4)));
        const result = this.call(name, ...values, place);
        const buffer = new DataView(this.#exports.memory.buffer).getUint32(place, true);
        this.call('free', place);
        return [result, buffer === 0 ? null : JSON.parse(decoder.decode(this.take(buffer)))];
    }

    /** A text that belongs to the module. */
    constantText(name, ...values) { return this.#text(this.call(name, ...values)); }

    // --- What needs no document ---

    get version() { return this.#text(this.#exports.platen_version()); }
    /** Lists such as platen_presets. */
    list(name) { return this.json(name, this.#context); }

    open(bytes, path) {
        return new Handle(this, this.do('platen_document_open_bytes', this.#context, bytes, path));
    }

    createTable(kind, preset) {
        return new Handle(this, this.do('platen_document_create_table', this.#context, kind, preset));
    }

    createConfiguration(device) {
        return new Handle(this,
            this.do('platen_document_create_configuration', this.#context, device));
    }

    /** {report, handle}: the handle is null when nothing can be saved. */
    repair(bytes, path, safeOnly) {
        const [made, report] = this.withReport('platen_repair', this.#context, bytes, path,
            safeOnly ? 1 : 0);
        return { report, handle: made === 0 ? null : new Handle(this, made) };
    }

    papers(path) {
        return new Handle(this, this.do('platen_papers_open', this.#context, path), 'papers');
    }
}

/** A document or a list of papers in the module. */
export class Handle {
    #engine;
    #address;
    #type;

    constructor(engine, address, type = 'document') {
        this.#engine = engine;
        this.#address = address;
        this.#type = type;
    }

    get kind() {
        return this.#engine.constantText('platen_document_kind', this.#address);
    }

    do(name, ...values) { return this.#engine.do(name, this.#address, ...values.map(addressOf)); }
    bytes(name, ...values) { return this.#engine.bytes(name, this.#address, ...values.map(addressOf)); }
    text(name, ...values) { return decoder.decode(this.bytes(name, ...values)); }
    json(name, ...values) { return JSON.parse(this.text(name, ...values)); }

    /** {notes, handle} */
    convert(to, prefix) {
        const [made, notes] = this.#engine.withReport('platen_document_convert', this.#address, to,
            prefix);
        if (made === 0) {
            throw this.#engine.error();
        }
        return { notes, handle: new Handle(this.#engine, made) };
    }

    get address() { return this.#address; }

    destroy() {
        this.#engine.call(`platen_${this.#type}_destroy`, this.#address);
        this.#address = 0;
    }
}

const addressOf = (value) => (value instanceof Handle ? value.address : value);
