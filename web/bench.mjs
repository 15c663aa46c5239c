// Called by bench/page: node bench.mjs PLATEN_WHOLE
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { closeBrowser, made, openPage } from './test/support.mjs';

const [whole] = process.argv.slice(2);
const rounds = 20;
const bytes = [...readFileSync(made('pens.ctb', 'create', 'ctb', '--preset', 'iso-0.25'))];
const median = (times) => times.sort((one, other) => one - other)[times.length >> 1];

/** Milliseconds until the pens are there, and until the browser has painted them. */
const opened = (page) => page.evaluate(async (list) => {
    const [{ openItems }, file] = [platen, { name: 'pens.ctb', bytes: Uint8Array.from(list) }];
    const begin = performance.now();
    openItems([file]);
    const there = performance.now() - begin;
    await new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
    return { there, painted: performance.now() - begin, pens: document.querySelectorAll('[role=option]').length };
}, bytes);

const first = [];
const again = [];
const native = [];
for (let round = 0; round < rounds; ++round) {
    const { page } = await openPage();
    // Until everything that belongs to starting is over.
    await page.evaluate(() => new Promise((done) => requestIdleCallback(done)));
    for (const times of [first, again]) {
        const result = await opened(page);
        if (result.pens !== 255) {
            throw new Error(`${result.pens} pens are drawn`);
        }
        times.push(result);
    }
    await page.close();
    const text = execFileSync(whole, ['read', '50']).toString();
    native.push(median(text.trim().split(/\s+/).map(Number).filter(Number.isFinite)) / 1000);
}
await closeBrowser();

const show = (what, time) => console.log(`${what.padEnd(58)}${time.toFixed(2).padStart(8)} ms`);
show('the page opens the first table: read and drawn', median(first.map(({ there }) => there)));
show('                                painted', median(first.map(({ painted }) => painted)));
show('another one:                    read and drawn', median(again.map(({ there }) => there)));
show('                                painted', median(again.map(({ painted }) => painted)));
show('this machine’s own code reads one', median(native));
const goal = median(first.map(({ painted }) => painted));
console.log(`goal: painted within 100 ms: ${goal < 100 ? 'reached' : 'missed'}`);
