// The page in a real browser, as people use it.
import { readFileSync } from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { assert, bytesOf, closeBrowser, downloads, drop, fill, goTo, made, message, openPage, partText, platen,
    press, root, violations, work, writeFileSync } from './support.mjs';

let pens;
let others;
let named;

before(() => {
    pens = made('pens.ctb', 'create', 'ctb', '--preset', 'iso-0.25');
    others = made('others.ctb', 'style', 'set', 'pens.ctb', '7', 'color=#ff8000', 'lineweight=0.5');
    made('one.stb', 'create', 'stb');
    made('two.stb', 'style', 'add', 'one.stb', 'Wall', 'lineweight=0.5');
    named = made('named.stb', 'style', 'add', 'two.stb', 'Thick', 'lineweight=0.5');
    made('office.pc3', 'create', 'pc3', '--device', 'print as pdf');
    platen(work, 'paper', 'add', 'office.pc3', '--name', 'Long roll', '--size', '914x5000');
});
after(closeBrowser);

const selectPens = (page, text) => fill(page, 'Select', text);
const options = (page) => page.$$eval('[role=option]', (list) => list.map((one) => one.textContent.trim()));
const selectedPens = (page) => page.$$eval('[aria-selected=true][data-number]',
    (list) => list.map((one) => Number(one.dataset.number)));
const command = (file, ...args) => {
    platen(work, ...args);
    return readFileSync(path.join(work, file));
};

test('pens are changed, undone, saved and opened again', async () => {
    const { page, faults } = await openPage();
    await drop(page, pens);
    assert.equal((await options(page)).length, 255);
    await selectPens(page, '1-3,250');
    await fill(page, 'Line weight', '0.5 mm');
    await fill(page, 'Screening', '40');
    const changed = await bytesOf(page);
    assert.deepEqual(changed, command('w.ctb', 'style', 'set', 'pens.ctb', '1-3,250', 'lineweight=0.5',
        'screening=40', '-o', 'w.ctb'));
    await page.click('h2');
    await page.keyboard.down('Control');
    await page.keyboard.press('z');
    await page.keyboard.press('z');
    assert.deepEqual(await bytesOf(page), readFileSync(pens));
    assert.equal(await page.title(), 'pens.ctb – Platen');
    await page.keyboard.press('y');
    await page.keyboard.press('y');
    await page.keyboard.up('Control');
    assert.deepEqual(await bytesOf(page), changed);
    const saved = await downloads(page, () => press(page, 'Save'));
    assert.deepEqual(saved, { 'pens.ctb': changed });
    assert.equal(await page.evaluate(() => platen.active.isChanged), false);
    await page.reload();
    await page.waitForFunction(() => window.platen);
    await drop(page, ['pens.ctb', saved['pens.ctb']]);
    await selectPens(page, '=250');
    assert.deepEqual(await selectedPens(page), [1, 2, 3, 250]);
    assert.deepEqual(faults, []);
    await page.close();
});

test('a value that is refused changes nothing, and why is said', async () => {
    const { page } = await openPage();
    await drop(page, pens);
    for (const [label, value, word] of [['Screening', '400', 'screening'],
        ['Select', '300', '300']]) {
        await fill(page, label, value);
        assert.match(await message(page), new RegExp(word, 'i'));
    }
    await goTo(page, 'weights');
    await fill(page, 'Line weight 8 in millimetres', '201');
    assert.match(await message(page), /200 mm/);
    await fill(page, 'Line weight 8 in millimetres', '0.014in');
    assert.deepEqual(await bytesOf(page), command('w.ctb', 'lineweights', 'pens.ctb', 'set', '8=0.014in', '-o', 'w.ctb'));
    await page.close();
});

test('mixed values are shown as mixed, and searching, sorting and the table agree', async () => {
    const { page } = await openPage();
    await drop(page, others);
    await selectPens(page, '6-7');
    assert.equal(await page.$eval('.form select', (field) => field.selectedOptions[0].text), 'different');
    await fill(page, 'Show', 'changed');
    assert.equal((await options(page)).length, 255);
    await fill(page, 'Search', '#ff8000');
    assert.deepEqual((await options(page)).map((text) => text.slice(0, 1)), ['7']);
    await fill(page, 'Search', '0.35');
    assert.deepEqual((await options(page)).map((text) => text.slice(0, 1)), ['2']);
    await page.$eval('[type=search]', (field) => {
        field.value = '';
        field.dispatchEvent(new Event('input', { bubbles: true }));
    });
    await fill(page, 'Sort by', 'weight');
    assert.match((await options(page)).at(-1), /^6/);
    await press(page, 'Table');
    assert.equal(await page.$$eval('tbody tr', (rows) => rows.length), 255);
    await page.close();
});

test('everything goes by the keyboard', async () => {
    const { page } = await openPage();
    await drop(page, pens);
    const focusOn = async (wanted) => {
        for (let count = 0; count < 60; ++count) {
            if (await page.evaluate((selector) => document.activeElement.matches(selector), wanted)) {
                return;
            }
            await page.keyboard.press('Tab');
        }
        assert.fail(`${wanted} is not reached`);
    };
    await focusOn('[role=option]');
    for (const key of ['ArrowRight', 'ArrowDown']) {
        await page.keyboard.press(key);
    }
    const [below] = await selectedPens(page);
    assert.ok(below > 10);
    await page.keyboard.press('Home');
    await page.keyboard.down('Shift');
    await page.keyboard.press('ArrowRight');
    await page.keyboard.press('ArrowRight');
    await page.keyboard.up('Shift');
    assert.deepEqual(await selectedPens(page), [1, 2, 3]);
    await page.keyboard.press('Enter');
    await focusOn('.form select:not([value=x])');
    await page.keyboard.press('Tab');
    await page.keyboard.type('0.70');
    await focusOn('[aria-label="Line type"]');
    assert.deepEqual(await bytesOf(page), command('w.ctb', 'style', 'set', 'pens.ctb', '1-3', 'lineweight=0.7',
        '-o', 'w.ctb'));
    await page.evaluate(() => document.activeElement.blur());
    await page.keyboard.press('?');
    await page.waitForSelector('dialog[open]');
    await page.keyboard.press('Escape');
    await page.waitForFunction(() => document.querySelector('dialog') === null);
    await focusOn('[role=tab]');
    await page.keyboard.press('ArrowRight');
    assert.equal(await page.$eval('[aria-selected=true][role=tab]', (tab) => tab.id), 'tab-weights');
    await page.close();
});

test('styles of named tables come, get other names, are made one and go', async () => {
    const { page } = await openPage();
    await drop(page, named);
    await press(page, 'Merge equal styles');
    assert.match(await message(page), /Wall stands for Thick/);
    assert.deepEqual(await bytesOf(page), command('w.stb', 'merge-pens', 'named.stb', '-o', 'w.stb'));
    await press(page, 'Add style');
    await fill(page, 'Name', 'Dashed');
    assert.deepEqual((await options(page)).map((text) => text.replace(/ (object|\d).*/, '')),
        ['Normal', 'Wall', 'Dashed']);
    await press(page, 'Rename');
    await fill(page, 'Name', 'Hidden');
    await press(page, 'Remove');
    assert.equal((await options(page)).length, 2);
    await press(page, 'Undo');
    assert.match((await options(page)).at(-1), /^Hidden/);
    await page.close();
});

test('tables become named ones, and CSV, and come back', async () => {
    const { page } = await openPage();
    await drop(page, pens);
    const saved = await downloads(page, () => press(page, 'Export CSV'));
    assert.deepEqual(saved['pens.csv'], command('w.csv', 'convert', 'pens.ctb', '-o', 'w.csv'));
    writeFileSync(path.join(work, 'in.csv'), saved['pens.csv'].toString().replace('0.25 mm', '0.5 mm'));
    await (await page.$('#choose-csv')).uploadFile(path.join(work, 'in.csv'));
    await page.waitForFunction(() => platen.active.isChanged);
    await selectPens(page, '=1');
    assert.deepEqual(await selectedPens(page), [1, 3]);
    await press(page, 'Undo');
    await press(page, 'Convert to STB');
    assert.match(await page.$eval('dialog', (dialog) => dialog.innerText), /Style_1\s+1, 8–255/);
    await press(page, 'Make it');
    assert.deepEqual(await bytesOf(page, 'pens.stb'), command('w.stb', 'convert', 'pens.ctb', '-o', 'w.stb'));
    await page.close();
});

test('files are compared and take changes from each other', async () => {
    const { page } = await openPage();
    await drop(page, pens);
    await drop(page, others);
    await goTo(page, 'compare');
    assert.match(await partText(page), /1 difference[^]*Pen 7[^]*Colour\s+#ff8000\s+the object’s[^]*0.5 mm\s+2 mm/);
    await press(page, 'Pen 7: others.ctb takes what pens.ctb has');
    assert.match(await partText(page), /Both mean the same/);
    await press(page, 'Undo');
    await press(page, 'Pen 7: pens.ctb takes what others.ctb has');
    platen(work, 'diff', 'pens.ctb', 'pens.ctb');
    assert.match(await partText(page), /Both mean the same/);
    await page.close();
});

test('damaged files are repaired after assumptions and losses were shown', async () => {
    const { page } = await openPage();
    const cut = path.join(root, 'fuzz/corpus/repair/cut.stb');
    await drop(page, cut);
    assert.match(await partText(page), /cannot be used[^]*ends too early/);
    await press(page, 'Repair …');
    assert.match(await page.$eval('dialog', (dialog) => dialog.innerText), /Guessed[^]*Certain[^]*634 bytes/);
    assert.deepEqual(await bytesOf(page), readFileSync(cut));
    await press(page, 'Take the repaired file');
    assert.deepEqual(await bytesOf(page), command('w.stb', 'repair', cut, '-o', 'w.stb'));
    await goTo(page, 'findings');
    assert.match(await partText(page), /Nothing is wrong/);
    await press(page, 'Undo');
    assert.deepEqual(await bytesOf(page), readFileSync(cut));
    const sums = readFileSync(pens);
    sums[52] ^= 1;
    await drop(page, ['sums.ctb', sums]);
    await goTo(page, 'findings');
    await press(page, 'Fix what is certain …');
    await press(page, 'Take the repaired file');
    assert.match(await partText(page), /Nothing is wrong/);
    await page.close();
});

test('papers of a configuration are kept in the PMP that came with it', async () => {
    const { page } = await openPage();
    await drop(page, path.join(work, 'office.pc3'), path.join(work, 'office.pmp'));
    await page.evaluate(() => [...document.querySelectorAll('.file button')]
        .find((button) => button.textContent.includes('office.pc3')).click());
    assert.doesNotMatch(await partText(page), /not among/);
    await fill(page, 'Copies', '3');
    await goTo(page, 'papers');
    assert.match(await partText(page), /Long roll\s+914 × 5000 mm/);
    await fill(page, 'Name', 'Wide');
    assert.match(await message(page), /office.pmp changed, too/);
    await page.click('.fold');
    await fill(page, 'Width', '800');
    assert.match(await partText(page), /800 × 5000 mm/);
    await press(page, 'Remove paper');
    assert.doesNotMatch(await partText(page), /Long roll/);
    for (let count = 0; count < 4; ++count) {
        await press(page, 'Undo');
    }
    assert.deepEqual([await bytesOf(page, 'office.pc3'), await bytesOf(page, 'office.pmp')],
        ['office.pc3', 'office.pmp'].map((name) => readFileSync(path.join(work, name))));
    await page.close();
});

test('a chart is printed on one sheet of its size', async () => {
    const { page } = await openPage();
    await drop(page, pens);
    await press(page, 'Print');
    await fill(page, 'Sheet', 'A2');
    await page.waitForSelector('.page[width="594mm"]');
    const printed = Buffer.from(await page.pdf({ preferCSSPageSize: true })).toString('latin1');
    const [[, width, height], ...more] = [...printed.matchAll(/MediaBox \[0 0 ([\d.]+) ([\d.]+)/g)];
    assert.deepEqual([width, height].map((points) => Math.round(points / 72 * 25.4)), [594, 420]);
    assert.deepEqual(more, []);
    await page.close();
});

test('names of hostile files are text, and nothing else', async () => {
    const hostile = '<img src=x onerror=window.hit=1></script><script>window.hit=1</script>';
    const { page, faults } = await openPage();
    const table = path.join(work, 'hostile.stb');
    platen(work, 'style', 'add', 'named.stb', hostile, `description=${hostile}`, '-o', 'hostile.stb');
    await drop(page, [`${hostile}.stb`, readFileSync(table)], named);
    await page.click('.file button');
    for (const tab of ['pens', 'weights', 'about', 'findings', 'compare', 'items']) {
        await goTo(page, tab);
        await page.evaluate(() => document.querySelectorAll('.fold').forEach((button) => button.click()));
    }
    await goTo(page, 'pens');
    await fill(page, 'Search', 'onerror');
    await page.click('[role=option]');
    assert.equal(await page.$eval('.form h3', (title) => title.textContent), hostile);
    await press(page, 'Print');
    await press(page, 'Cancel');
    const shown = path.join(work, 'view.html');
    // A name without a slash can be that of a file.
    const name = '<!--<script>.stb';
    writeFileSync(path.join(work, name), readFileSync(table));
    platen(work, 'view', name, '-o', shown);
    const second = await openPage({ html: shown });
    assert.equal((await options(second.page)).length, 4);
    for (const tab of [page, second.page]) {
        assert.equal(await tab.evaluate(() => window.hit), undefined);
        assert.equal(await tab.evaluate(() => document.querySelector('img, iframe')), null);
        await tab.close();
    }
    assert.deepEqual([...faults, ...second.faults], []);
});

test('a module that fails is started anew, and no work is lost', async () => {
    const { page } = await openPage();
    await drop(page, pens);
    await selectPens(page, '1');
    await fill(page, 'Line weight', '2 mm');
    const changed = await bytesOf(page);
    await page.evaluate(() => {
        try {
            platen.workspace.engine.call('platen_document_bytes', 0x7ffffff0);
        } catch (error) {
            window.failure = error.name;
        }
    });
    assert.equal(await page.evaluate(() => window.failure), 'RestartedError');
    await fill(page, 'Line weight', '0.5 mm');
    await press(page, 'Undo');
    assert.deepEqual(await bytesOf(page), changed);
    await page.close();
});

test('files are written in place where the browser can, but not over the work of others', async () => {
    const { page } = await openPage({ pickers: true });
    await page.evaluate((list) => {
        window.disk = Uint8Array.from(list);
        const handle = { name: 'pens.ctb', kind: 'file', getFile: async () => new File([window.disk], 'pens.ctb'),
            createWritable: async () => ({ write: async (bytes) => { window.written = bytes; },
                close: async () => { window.disk = window.written.slice(); } }) };
        window.showOpenFilePicker = async () => [handle];
        window.confirm = () => { window.asked = true; return false; };
    }, [...readFileSync(pens)]);
    await press(page, 'Open');
    await page.waitForFunction(() => platen.active);
    const change = async (weight) => {
        await fill(page, 'Line weight', weight);
        await press(page, 'Save');
    };
    await change('0.5 mm');
    await page.waitForFunction(() => !platen.active.isChanged);
    assert.deepEqual(Buffer.from(await page.evaluate(() => [...window.disk])), await bytesOf(page));
    await page.evaluate(() => { window.disk = new Uint8Array(3); });
    await change('0.7 mm');
    await page.waitForFunction(() => window.asked);
    assert.equal(await page.evaluate(() => window.disk.length), 3);
    const question = new Promise((resolve) => page.once('dialog', async (dialog) => {
        resolve(dialog.type());
        await dialog.accept();
    }));
    await page.close({ runBeforeUnload: true });
    assert.equal(await question, 'beforeunload');
});

for (const dark of [false, true]) {
    test(`nobody is shut out, ${dark ? 'dark' : 'light'}`, async () => {
        const { page, faults } = await openPage({ dark, width: dark ? 500 : 1280 });
        const found = [];
        const look = async (where) =>
            found.push(...(await violations(page)).map((text) => `${where}: ${text}`));
        await look('nothing open');
        await drop(page, pens);
        await look('pens');
        await drop(page, others);
        for (const tab of ['weights', 'findings', 'compare', 'about', 'items']) {
            await goTo(page, tab);
            await look(tab);
        }
        // A few pens are looked at sooner than 255.
        await drop(page, named);
        await press(page, 'Table');
        await look('table');
        for (const button of ['New', 'Help', 'Print', 'Convert to CTB', 'Add style']) {
            await press(page, button);
            await look(button);
            await page.keyboard.press('Escape');
            await page.waitForFunction(() => document.querySelector('dialog') === null);
        }
        await drop(page, path.join(root, 'fuzz/corpus/repair/cut.stb'));
        await look('damaged');
        await drop(page, path.join(work, 'office.pc3'), path.join(work, 'office.pmp'));
        for (const tab of ['about', 'papers', 'items']) {
            await goTo(page, tab);
            await look(`configuration ${tab}`);
        }
        assert.deepEqual(found, []);
        assert.deepEqual(faults, []);
        await page.close();
    });
}
