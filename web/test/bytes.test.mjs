// What the page writes is what the command writes, this machine's and, where PLATEN_WINDOWS_COMMAND names
// one, that for Windows: the same edits of the same files, byte for byte.
import { createHash } from 'node:crypto';
import { copyFileSync, cpSync, mkdirSync, readFileSync, readdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { test } from 'node:test';
import { assert, loadCore, platen, platenForWindows, root, work } from './support.mjs';

const folder = path.join(work, 'bytes');
mkdirSync(folder);

const presets = ['iso-0.13', 'iso-0.18', 'iso-0.25', 'iso-0.35', 'iso-0.5', 'black', 'grayscale', 'screening'];
const devices = ['PDF', 'BMP', 'PNG', 'JPG', 'TIF'];

function makeSamples() {
    for (const place of ['plot_style_table', 'plot_configuration', 'plot_model_parameters']) {
        // What a fuzzer made is named by its hash; some of it is enough.
        for (const name of readdirSync(path.join(root, 'fuzz/corpus', place)).filter((one) => !/^[1-9a-f][0-9a-f]{11}$/.test(one))) {
            copyFileSync(path.join(root, 'fuzz/corpus', place, name), path.join(folder, `${place}-${name}`));
        }
    }
    for (const preset of presets) {
        platen(folder, 'create', 'ctb', '--preset', preset, '-o', `${preset}.ctb`);
        platen(folder, 'convert', `${preset}.ctb`, '-o', `${preset}.stb`);
        platen(folder, 'convert', `${preset}.ctb`, '-o', `${preset}.json`);
    }
    for (const device of devices) {
        platen(folder, 'create', 'pc3', '--device', `Print As ${device}`, '-o', `${device}.pc3`);
        platen(folder, 'create', 'pmp', '--from', `${device}.pc3`, '-o', `${device}.pmp`);
        platen(folder, 'convert', `${device}.pc3`, '-o', `${device}.txt`);
    }
    return readdirSync(folder);
}

/** Each edit: what the page does with a document, and the words of the command for it. */
const edits = {
    ctb: [
        [(page, file) => page.edit(file, '', (one) => one.do('platen_style_set', '1-9,250', 'lineweight=0.35')),
            (name) => ['style', 'set', name, '1-9,250', 'lineweight=0.35', '--in-place']],
        [(page, file) => page.edit(file, '', (one) => one.do('platen_style_set', '7', 'color=#ff8000')),
            (name) => ['style', 'set', name, '7', 'color=#ff8000', '--in-place']],
        [(page, file) => page.edit(file, '', (one) => one.do('platen_lineweight_set', 3, '0.014in')),
            (name) => ['lineweights', name, 'set', '3=0.014in', '--in-place']],
    ],
    stb: [
        [(page, file) => page.edit(file, '', (one) => one.do('platen_style_add', 'Wände ✓', null)),
            (name) => ['style', 'add', name, 'Wände ✓', '--in-place']],
        [(page, file) => page.edit(file, '', (one) => one.do('platen_style_set', '1', 'screening=40')),
            (name) => ['style', 'set', name, '1', 'screening=40', '--in-place']],
        [(page, file) => page.edit(file, '', (one) => one.json('platen_styles_merge_equal')),
            (name) => ['merge-pens', name, '--in-place']],
    ],
    pc3: [
        [(page, file) => page.edit(file, '', (one) => one.do('platen_document_set', 'media/number_of_copies', '2')),
            (name) => ['set', name, 'media/number_of_copies=2', '--in-place']],
        [(page, file) => page.edit(file, '', (one) => one.do('platen_document_set', 'vendor:block', null)),
            (name) => ['set', name, 'vendor:block', '--in-place']],
    ],
    pmp: [
        [(page, file) => page.editPapers(file, '', (papers) =>
            papers.do('platen_papers_add', 'Roll', 914, 2000, new Float64Array([1, 2, 3, 4]), 'mm')),
            (name) => ['paper', 'add', name, '--name', 'Roll', '--size', '914x2000', '--margins', '1,2,3,4',
                '--units', 'mm'], (name) => ['set', name, `meta/user_defined_model_pathname=${name}`, '--in-place']],
    ],
};

const hash = (bytes) => createHash('sha256').update(bytes).digest('hex');
const samples = makeSamples();
const folderForWindows = path.join(work, 'windows');
cpSync(folder, folderForWindows, { recursive: true });
/** Each command and the folder that it works in. */
const systems = [[platen, folder], ...platenForWindows ? [[platenForWindows, folderForWindows]] : []];
const { workspace } = await loadCore();
let compared = 0;

for (const name of samples) {
    test(`${name} is the same from the page and from ${systems.length} command(s)`, () => {
        const page = workspace();
        const [file] = page.add([{ name, bytes: new Uint8Array(readFileSync(path.join(folder, name))) }]);
        let done = 0;
        for (const [inPage, ...byCommand] of edits[page.kind(file)] ?? []) {
            let refused = null;
            try {
                inPage(page, file);
            } catch (error) {
                refused = error;
            }
            for (const [run, place] of systems) {
                let failed = null;
                try {
                    byCommand.forEach((words) => run(place, ...words(name)));
                } catch (error) {
                    failed = error;
                }
                assert.equal(refused === null, failed === null, `${refused} / ${failed}`);
                assert.equal(hash(file.bytes), hash(readFileSync(path.join(place, name))), run.name);
            }
            done += refused === null ? 1 : 0;
        }
        compared += done > 0 ? 1 : 0;
    });
}

test('a new PMP beside a configuration is the same, but for the folder that nobody knows', () => {
    const page = workspace();
    writeFileSync(path.join(folder, 'new.pc3'), readFileSync(path.join(folder, 'PDF.pc3')));
    const [file] = page.add([{ name: 'new.pc3', bytes: new Uint8Array(readFileSync(path.join(folder, 'new.pc3'))) }]);
    page.editPapers(file, '', (papers) => papers.do('platen_papers_add', 'Roll', 914, 2000, null, 'mm'));
    platen(folder, 'paper', 'add', 'new.pc3', '--name', 'Roll', '--size', '914x2000', '--units', 'mm');
    platen(folder, 'set', 'new.pc3', 'meta/user_defined_model_pathname=new.pmp', '--in-place');
    for (const one of page.files) {
        assert.equal(hash(one.bytes), hash(readFileSync(path.join(folder, one.name))), one.name);
    }
    assert.equal(page.files.length, 2);
    page.undo(file);
    assert.deepEqual([page.files.length, file.isChanged], [1, false]);
});

test('numbers are written with the same digits', () => {
    const page = workspace();
    const place = path.join(folder, 'digits.ctb');
    platen(folder, 'create', 'ctb', '-o', 'digits.ctb');
    const sizes = Array.from({ length: 255 }, (_, number) => `plot_style/${number}/linepattern_size=${
        [number / 7, 2 ** (number - 150), number * 1e7 + 0.1, 10 ** (number / 8 - 12)][number % 4]}`);
    platen(folder, 'set', 'digits.ctb', ...sizes, '--in-place');
    platen(folder, 'convert', 'digits.ctb', '-o', 'digits.csv');
    const [file] = page.add([{ name: 'digits.ctb', bytes: new Uint8Array(readFileSync(place)) }]);
    assert.equal(page.document(file).text('platen_table_csv'), readFileSync(path.join(folder, 'digits.csv'), 'utf8'));
});

test('fifty samples were changed and compared', () => assert.ok(compared >= 50, `${compared} of ${samples.length}`));
