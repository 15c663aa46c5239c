// Runs a WebAssembly program with this machine's files: node run.mjs PROGRAM.wasm ARGUMENTS...
import { readFile } from 'node:fs/promises';
import { WASI } from 'node:wasi';

const [program, ...args] = process.argv.slice(2);
const wasi = new WASI({
    version: 'preview1', args: [program, ...args], preopens: { '/': '/' }, returnOnExit: true,
});
const module = await WebAssembly.compile(await readFile(program));
// Debian 12's Node has no getImportObject().
const imports = { wasi_snapshot_preview1: wasi.wasiImport };
process.exitCode = wasi.start(await WebAssembly.instantiate(module, imports));
