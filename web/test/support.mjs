// A browser, the page in it, and files to drop on it.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { fileURLToPath, pathToFileURL } from 'node:url';

export const root = path.resolve(path.dirname(fileURLToPath(import.meta.url)), '../..');
const modules = process.env.PLATEN_WEB_MODULES;
const require = createRequire(`${modules}/`);
const puppeteer = require('puppeteer-core');
const command = process.env.PLATEN_COMMAND ?? path.join(root, 'build/dev/platen');

export const work = mkdtempSync(path.join(tmpdir(), 'platen-page-'));
process.on('exit', () => rmSync(work, { recursive: true, force: true }));

/** Runs a command in a folder. Done with warnings is done. */
function run(folder, ...args) {
    const { status, stderr } = spawnSync(args[0], args.slice(1), { cwd: folder, stdio: ['ignore', 'ignore', 'pipe'],
        env: { ...process.env, PLATEN_PAGE: path.join(root, 'build/web/platen.html') } });
    assert.ok(status === 0 || status === 3, `${args.join(' ')}: ${status} ${stderr}`);
}

/** Runs the command of this machine in a folder. */
export function platen(folder, ...args) {
    run(folder, command, ...args);
}

const windowsCommand = process.env.PLATEN_WINDOWS_COMMAND;
/** The same with the command for Windows, which is there when a program that runs it is named. */
export const platenForWindows = windowsCommand && function platenForWindows(folder, ...args) {
    run(folder, path.join(root, 'scripts/wine'), windowsCommand, ...args);
};

/** The page's core without a browser. */
export async function loadCore() {
    const core = await import(pathToFileURL(path.join(root, 'build/web/core.mjs')));
    const module = new WebAssembly.Module(
        readFileSync(path.join(root, 'build/web/static/platen.wasm')));
    return { ...core, workspace: () => new core.Workspace(new core.Engine(module)) };
}

let browser = null;

export async function openBrowser() {
    browser ??= await puppeteer.launch({ executablePath: process.env.PLATEN_BROWSER ?? '/usr/bin/chromium',
        args: ['--no-sandbox', '--disable-gpu', '--lang=en'], headless: true });
    return browser;
}

export async function closeBrowser() {
    await browser?.close();
    browser = null;
}

/** The page in a tab of its own. Whatever it asks for over the network, and every fault in it, is in
 *  `faults`. Without `pickers` it has no access to files, as in other browsers. */
export async function openPage({ html = path.join(root, 'build/web/platen.html'), dark = false, width = 1280,
    pickers = false } = {}) {
    const page = await (await openBrowser()).newPage();
    const faults = [];
    const here = pathToFileURL(html).href;
    page.on('request', (request) => {
        const address = request.url();
        if (address !== here && !address.startsWith('data:') && !address.startsWith('blob:')) {
            faults.push(`asked for ${address}`);
        }
    });
    page.on('console', (message) => message.type() === 'error' && faults.push(message.text()));
    page.on('pageerror', (error) => faults.push(error.stack));
    await page.setViewport({ width, height: 850 });
    await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: dark ? 'dark' : 'light' }]);
    if (!pickers) {
        await page.evaluateOnNewDocument(() => {
            delete window.showOpenFilePicker;
            delete window.showSaveFilePicker;
        });
    }
    await page.goto(here);
    await page.waitForFunction(() => window.platen);
    return { page, faults };
}

/** Drops files, each [name, bytes] or a path, as a person would. */
export async function drop(page, ...files) {
    const list = files.map((file) => (typeof file === 'string' ? [path.basename(file), readFileSync(file)] : file))
        .map(([name, bytes]) => ({ name, base64: Buffer.from(bytes).toString('base64') }));
    const before = await page.evaluate(() => platen.workspace.files.length);
    await page.evaluate((all) => {
        const transfer = new DataTransfer();
        for (const { name, base64 } of all) {
            transfer.items.add(new File([Uint8Array.from(atob(base64), (one) => one.charCodeAt(0))], name));
        }
        document.body.dispatchEvent(new DragEvent('drop',
            { dataTransfer: transfer, bubbles: true, cancelable: true }));
    }, list);
    await page.waitForFunction((count) => platen.workspace.files.length === count, {}, before + list.length);
}

/** Presses the button with this name, of what is shown. */
export async function press(page, name) {
    const button = await page.waitForSelector(`::-p-aria([name="${name}"][role="button"])`);
    await button.click();
}

export const goTo = (page, tab) => page.click(`#tab-${tab}`);
export const message = (page) => page.$eval('.message', (element) => element.textContent);
export const partText = (page) => page.$eval('.part', (element) => element.innerText);

/** Gives a field that a label names another value, as by typing. */
export async function fill(page, label, value) {
    const field = await page.waitForFunction((wanted) => {
        const place = document.querySelector('dialog') ?? document;
        const nameOf = (element) => element.getAttribute('aria-label') ??
            element.closest('label')?.firstChild.textContent ?? '';
        return [...place.querySelectorAll('input, select')].find((element) =>
            nameOf(element).trim().startsWith(wanted));
    }, {}, label);
    if (await field.evaluate((element) => element.tagName === 'SELECT')) {
        await field.select(value);
    } else {
        await field.click({ count: 3 });
        await field.type(value);
        await page.keyboard.press('Enter');
    }
}

/** The bytes of the file that is shown, or of the one with this name. */
export const bytesOf = async (page, name) => Buffer.from(await page.evaluate((wanted) =>
    [...(platen.workspace.files.find((file) => file.name === wanted) ?? platen.active).bytes], name));

/** What the page downloads while `work` is done: {name: bytes}. */
export async function downloads(page, does) {
    const folder = mkdtempSync(path.join(work, 'downloads-'));
    const client = await page.createCDPSession();
    await client.send('Browser.setDownloadBehavior', { behavior: 'allow', downloadPath: folder,
        eventsEnabled: true });
    const done = new Promise((resolve) => client.on('Browser.downloadProgress',
        (event) => event.state === 'completed' && resolve()));
    await does();
    await done;
    await client.detach();
    return Object.fromEntries(readdirSync(folder).map((name) => [name, readFileSync(path.join(folder, name))]));
}

/** What axe-core finds wrong for people who see or hear the page otherwise. */
export async function violations(page) {
    await page.evaluate(readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8'));
    const { violations: found } = await page.evaluate(() => axe.run(document, { resultTypes: ['violations'] }));
    return found.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html).slice(0, 3).join(' ')}`);
}

/** Makes a file by the command and gives its path. */
export function made(name, ...args) {
    const [verb, ...more] = args;
    platen(work, verb, ...more, '-o', name);
    return path.join(work, name);
}

export { assert, writeFileSync };
