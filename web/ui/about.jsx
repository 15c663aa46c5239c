// What a file says of itself: of configurations device, paper and output; of tables their own settings.
import { app, isTable } from './app.js';
import { Value, treeOf } from './items.jsx';
import { propertyLabel } from './words.js';

const yes = (value) => (value ? 'yes' : 'no');
const length = (value) => (Number.isInteger(value) ? `${value}` : value.toFixed(2));

/** The item at a path, or undefined. */
function itemAt(file, path) {
    return path.split('/').reduce((node, name) => node?.children.find((child) => child.name === name),
        treeOf(file));
}

/** A row is [label, text], or [label, text, path of the item that can be changed]. */
function Section({ file, title, rows }) {
    const shown = rows.filter(([, text, path]) => (text ?? '') !== '' || (path && itemAt(file, path)));
    return shown.length > 0 && (
        <section class="card">
            <h3>{title}</h3>
            <dl>
                {shown.map(([label, text, path, item = path && itemAt(file, path)]) => (
                    <div key={path ?? label}>
                        <dt>{label}</dt>
                        <dd>{item ? <Value file={file} item={item} label={label} /> : <bdi>{text}</bdi>}</dd>
                    </div>
                ))}
            </dl>
        </section>
    );
}

/** Properties that are kept by name: {name, item}. */
function properties(file) {
    const custom = treeOf(file).children.find((child) => child.name === 'custom');
    return (custom?.children ?? []).map((entry) => ({
        name: entry.children.find((child) => child.name === 'name')?.value ?? entry.name,
        item: entry.children.find((child) => child.name !== 'name' && child.type !== 'block'),
    })).filter(({ item }) => item);
}

function configuration(file, { document, kind }) {
    const { meta, media, io, res_color_mem: colours } = document;
    const size = media?.size;
    const bounds = size?.media_description?.media_bounds;
    const printable = size?.media_description;
    const unit = printable?.dimensional === false ? 'pixels' : 'mm';
    const resolution = colours?.resolution;
    const known = properties(file);
    const rows = (list) => list.map(({ name, item }) => [propertyLabel(name), '', item.path, item]);
    return [
        ['Device', [
            ['Device', document.built_in_device || meta.win_device_name || meta.localized_model_name],
            ['Description', '', 'meta/config_description'],
            ['Model', [meta.canonical_family_name, meta.localized_model_name].filter(Boolean).join(', ')],
            ['Driver', meta.driver_pathname],
            ['Parameters (PMP)', kind === 'pc3' && meta.user_defined_model_pathname
                ? document.pmp?.split('/').pop() ?? `${meta.user_defined_model_pathname}, not among the open files` : ''],
        ]],
        ['Paper', size ? [
            ['Paper', size.name],
            ['Size', bounds && `${length(bounds.urx)} × ${length(bounds.ury)} ${unit}`],
            ['Printable', printable && `${length(printable.printable_bounds_llx)}, ${
                length(printable.printable_bounds_lly)} to ${length(printable.printable_bounds_urx)}, ${
                length(printable.printable_bounds_ury)} ${unit}`],
            ['Landscape', yes(size.landscape_mode)],
            ['Copies', '', 'media/number_of_copies'],
        ] : []],
        ['Output', [
            ['Plots to a file', '', 'io/plot_to_file'],
            ['Port or file', io?.pathname],
            ['Resolution', resolution && `${length(resolution.phys_resolution_x)} × ${
                length(resolution.phys_resolution_y)} dots per inch`],
            ['Colours', colours && `${colours.num_colors.toLocaleString('en')} (${colours.color_depth} bits)`],
            ['Fonts as text', '', 'meta/truetype_as_text'],
        ]],
        ['PDF options', rows(known.filter(({ name }) => name.startsWith('Pdf')))],
        ['Properties', rows(known.filter(({ name }) => !name.startsWith('Pdf')))],
    ];
}

const table = (document) => [['Table', [
    ['Description', '', 'description'],
    ['Scale factor', '', 'custom_lineweight_display_units' in document ? 'scale_factor' : ''],
    ['Apply the factor', '', 'apply_factor'],
]]];

export function About({ file }) {
    const info = app.workspace.ask(file, 'platen_document_info');
    const { container } = info;
    const sections = isTable(info.kind) ? table(info.document) : configuration(file, info);
    const name = { ok: 'right', wrong: 'wrong' }[container.checksum] ?? container.checksum;
    return (
        <div class="cards">
            {sections.map(([title, rows]) => <Section key={title} file={file} title={title} rows={rows} />)}
            <Section file={file} title="File" rows={[
                ['Version', container.version && `${container.version}`],
                ['Content', `${container.body_bytes.toLocaleString('en')} bytes, in the file ${
                    file.bytes.length.toLocaleString('en')}`],
                ['Characters', container.encoding],
                ['Checksum', name],
            ]} />
        </div>
    );
}
