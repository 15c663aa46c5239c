// Bundles the page: node build.mjs MODULES MODULE.wasm FOLDER
//   MODULES   the node_modules that package-lock.json names
// FOLDER gets platen.html, which is everything in one file, and static/, the same for a server.
import { createHash } from 'node:crypto';
import { mkdir, readFile, writeFile } from 'node:fs/promises';
import { createRequire } from 'node:module';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';

const here = path.dirname(fileURLToPath(import.meta.url));
const [modules, modulePath, folder] = process.argv.slice(2).map((name) => path.resolve(name));
const esbuild = createRequire(`${modules}/`)('esbuild');

async function bundle(entry, format) {
    const { outputFiles } = await esbuild.build({
        entryPoints: [path.join(here, entry)], bundle: true, minify: true, write: false,
        format, target: ['es2022', 'chrome111', 'firefox115', 'safari16.4'], charset: 'utf8',
        jsx: 'automatic', jsxImportSource: 'preact', nodePaths: [modules], legalComments: 'none',
        absWorkingDir: here,
    });
    return outputFiles[0].text;
}

const hash = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;
/** Text in a script element ends at the first "</script"; in a string this is the same. */
const inScript = (text) => text.replaceAll('</script', '<\\/script').replaceAll('<!--', '<\\!--');

const script = inScript(await bundle('ui/main.jsx', 'iife'));
const style = await bundle('style.css');
const module = await readFile(modulePath);
const template = await readFile(path.join(here, 'page.html'), 'utf8');

const policy = (more) => ["default-src 'none'", `script-src ${more.script} 'wasm-unsafe-eval'`,
    `style-src ${more.style}`, 'img-src data: blob:', ...more.connect, "base-uri 'none'",
    "form-action 'none'"].join('; ');
const fill = (values) => template.replaceAll(/@(\w+)@/g, (_, name) => values[name]);

const whole = fill({
    policy: policy({ script: hash(script), style: hash(style), connect: [] }),
    style: `<style>${style}</style>`,
    module: '<script type="text/plain" id="platen-module">' +
        `${gzipSync(module, { level: 9 }).toString('base64')}</script>`,
    script: `<script>${script}</script>`,
});
await mkdir(path.join(folder, 'static'), { recursive: true });
const files = {
    'platen.html': whole,
    'static/index.html': fill({
        policy: policy({ script: "'self'", style: "'self'", connect: ["connect-src 'self'"] }),
        style: '<link rel="stylesheet" href="platen.css">',
        module: '',
        script: '<script src="platen.js" defer></script>',
    }),
    'static/platen.css': style,
    'static/platen.js': script,
    'static/platen.wasm': module,
    // What the page is without its looks, for tests and benchmarks in Node.
    'core.mjs': await bundle('core/index.js', 'esm'),
};
for (const [name, content] of Object.entries(files)) {
    await writeFile(path.join(folder, name), content);
}

const compressed = (content) => gzipSync(content, { level: 9 }).length;
const sizes = Object.entries(files).filter(([name]) => name !== 'core.mjs').map(([name, content]) => `${name} ${compressed(content)}`);
console.error(`compressed sizes: ${sizes.join(', ')}`);
const together = ['index.html', 'platen.css', 'platen.js', 'platen.wasm']
    .reduce((sum, name) => sum + compressed(files[`static/${name}`]), 0);
console.error(`module and page together: ${together} bytes compressed`);
