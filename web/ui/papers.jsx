// Papers drawn to scale, and the custom ones to add and to change.
import { app, attempt, say, setView } from './app.js';
import { plural } from './words.js';

/** The custom papers of a file, or why they cannot be listed. */
function papersOf(file) {
    return app.workspace.know(file, 'papers', () => {
        try {
            const handle = app.workspace.engine.papers(file.path);
            const list = handle.json('platen_papers_list');
            handle.destroy();
            return list;
        } catch (error) {
            return { error, papers: [], current: null };
        }
    });
}

/** The chosen paper of a configuration as the list has papers. */
function chosenPaper(file) {
    const size = app.workspace.ask(file, 'platen_document_info').document?.media?.size;
    const bounds = size?.media_description?.media_bounds;
    if (!bounds) {
        return null;
    }
    const area = size.media_description;
    return { name: size.name, width: bounds.urx, height: bounds.ury, isChosen: true,
        units: area.dimensional ? 'mm' : 'px',
        margins: { left: area.printable_bounds_llx, bottom: area.printable_bounds_lly,
            right: bounds.urx - area.printable_bounds_urx, top: bounds.ury - area.printable_bounds_ury } };
}

const sizeText = (paper) => `${paper.width.toFixed(paper.units === 'in' ? 2 : 1).replace(/\.0$/, '')} × ${
    paper.height.toFixed(paper.units === 'in' ? 2 : 1).replace(/\.0$/, '')} ${
    { mm: 'mm', in: 'in', px: 'pixels' }[paper.units] ?? paper.units}`;

const inMm = (paper, value) => (paper.units === 'in' ? value * 25.4 : value);

/** The papers beside each other, all to the same scale. */
function PaperDrawing({ papers, selected, onSelect }) {
    const most = Math.max(...papers.flatMap((paper) =>
        [inMm(paper, paper.width) * 0.6, inMm(paper, paper.height)]));
    const largest = papers.length > 6 ? 160 : 250;
    const scaled = (paper, value) => inMm(paper, value) * largest / most;
    return (
        <div class="sheets">
            {papers.map((paper, number) => {
                const [width, height] = [scaled(paper, paper.width), scaled(paper, paper.height)];
                const { left = 0, bottom = 0, right = 0, top = 0 } = paper.margins ?? {};
                return (
                    <figure key={number} class={paper.name === selected ? 'current' : ''}
                        onClick={() => onSelect?.(paper)}>
                        <svg width={width + 2} height={height + 2} viewBox={`-1 -1 ${width + 2} ${height + 2}`}
                            aria-hidden="true">
                            <rect class="sheet" width={width} height={height} />
                            {left + bottom + right + top > 0 && (
                                <rect class="printable" x={scaled(paper, left)} y={scaled(paper, top)}
                                    width={Math.max(width - scaled(paper, left + right), 0)}
                                    height={Math.max(height - scaled(paper, top + bottom), 0)} />
                            )}
                        </svg>
                        <figcaption><bdi>{paper.name}</bdi><br />
                            <span class="quiet">{sizeText(paper)}{paper.isChosen ? ', chosen' : ''}</span>
                        </figcaption>
                    </figure>
                );
            })}
        </div>
    );
}

const sides = ['left', 'bottom', 'right', 'top'];

function PaperForm({ file, paper }) {
    const isNew = paper === undefined;
    const change = (event) => {
        event.preventDefault();
        const data = new FormData(event.target);
        const name = data.get('name').trim();
        const units = data.get('units');
        const margins = new Float64Array(sides.map((side) => Number(data.get(side))));
        const shape = [Number(data.get('width')), Number(data.get('height')), margins, units];
        const isShaped = isNew || shape[0] !== paper.width || shape[1] !== paper.height ||
            units !== paper.units || sides.some((side, place) => margins[place] !== (paper.margins?.[side] ?? 0));
        const isNamed = !isNew && name !== paper.name;
        const words = isNew ? `paper ${name} added` : [isShaped && `paper ${paper.name} has another size`,
            isNamed && `paper ${paper.name} is called ${name}`].filter(Boolean).join(', ');
        if (isShaped || isNamed) {
            changePapers(file, words, (papers) => {
                if (isShaped) {
                    papers.do(isNew ? 'platen_papers_add' : 'platen_papers_resize',
                        isNew ? name : paper.name, ...shape);
                }
                if (isNamed) {
                    papers.do('platen_papers_rename', paper.name, name);
                }
            }, name);
        }
    };
    const unitsOf = { mm: 'millimetres', in: 'inches', px: 'pixels' };
    const number = (name, label, value, min) => (
        <label class="field"><span>{label}</span>
            <input type="number" name={name} required step="any" min={min} value={value} /></label>
    );
    return (
        <form class="form card" onSubmit={change} key={isNew ? 'new' : paper.name}
            aria-label={isNew ? 'New paper' : 'Selected paper'}>
            <h3><bdi>{isNew ? 'New paper' : paper.name}</bdi></h3>
            <div class="fields">
                <label class="field"><span>Name</span>
                    <input name="name" required value={isNew ? '' : paper.name} /></label>
                {number('width', 'Width', isNew ? 914 : paper.width, 0)}
                {number('height', 'Height', isNew ? 1200 : paper.height, 0)}
                <label class="field"><span>Units</span>
                    <select name="units" value={paper?.units ?? 'mm'}>
                        {Object.entries(unitsOf).map(([key, text]) => <option key={key} value={key}>{text}</option>)}
                    </select></label>
                {sides.map((side) => number(side, `Margin ${side}`, paper?.margins?.[side] ?? 0, 0))}
            </div>
            <p class="tools">
                <button type="submit" class="primary">{isNew ? 'Add paper' : 'Change paper'}</button>
                {!isNew && <button type="button" onClick={() => changePapers(file, `paper ${paper.name} removed`,
                    (papers) => papers.do('platen_papers_remove', paper.name), null)}>Remove paper</button>}
            </p>
        </form>
    );
}

function changePapers(file, words, work, select) {
    attempt(() => {
        const written = app.workspace.editPapers(file, words, work);
        const lost = [written.parameters, written.configuration].flatMap((one) => one?.lost ?? []);
        setView(file, { paper: select });
        const others = app.workspace.files.filter((other) => other !== file && other.isChanged &&
            [written.parameters?.path, written.configuration?.path].includes(other.path));
        say(`${words}.${others.length > 0 ? ` ${others.map((other) => other.name).join(', ')} changed, too: save both.` : ''}${
            lost.length > 0 ? ` ${plural(lost.length, 'item')} that nobody knows went: ${lost.join(', ')}.` : ''}`);
    });
}

export function Papers({ file, view }) {
    const { papers, error, largest } = papersOf(file);
    const chosen = chosenPaper(file);
    const all = [...(chosen && !papers.some((paper) => paper.name === chosen.name) ? [chosen] : []),
        ...papers.map((paper) => ({ ...paper, isChosen: chosen?.name === paper.name ||
            chosen?.name === paper.global_name }))];
    // Pixels and lengths have no common scale.
    const groups = [all.filter((paper) => paper.units !== 'px'), all.filter((paper) => paper.units === 'px')]
        .filter((group) => group.length > 0);
    const selected = papers.find((paper) => paper.name === view.paper);
    const select = (paper) => setView(file, { paper: paper.isChosen && !paper.kept_in ? null : paper.name });
    return (
        <>
            {error && <p class="verdict">The papers cannot be changed: {error.message}
                {error.remedy ? ` (${error.remedy})` : ''}</p>}
            <div class="papers-view">
                <div>
                    {groups.map((group, number) => (
                        <PaperDrawing key={number} papers={group} selected={view.paper} onSelect={select} />
                    ))}
                    {all.length === 0 && <p class="quiet">No papers of its own.</p>}
                    {papers.length > 0 && (
                        <div class="scroll-sideways" tabIndex={0} role="region" aria-label="Custom papers"><table>
                            <thead><tr><th scope="col">Custom paper</th><th scope="col" class="number">Width</th>
                                <th scope="col" class="number">Height</th><th scope="col">Units</th>
                                <th scope="col" class="number">Margins left, bottom, right, top</th>
                                <th scope="col">Kept in</th></tr></thead>
                            <tbody>
                                {papers.map((paper) => (
                                    <tr key={paper.name} class={paper.name === view.paper ? 'current' : ''}>
                                        <th scope="row"><button type="button" class="fold"
                                            aria-pressed={paper.name === view.paper}
                                            onClick={() => select(paper)}><bdi>{paper.name}</bdi></button></th>
                                        <td class="number">{paper.width}</td>
                                        <td class="number">{paper.height}</td>
                                        <td>{paper.units}</td>
                                        <td class="number">{paper.margins
                                            ? sides.map((side) => paper.margins[side]).join(', ') : '?'}</td>
                                        <td>{paper.kept_in === 'parameters' ? 'the PMP' : 'the PC3'}</td>
                                    </tr>
                                ))}
                            </tbody>
                        </table></div>
                    )}
                    {largest?.width > 0 && <p class="quiet">The device takes papers up to {largest.width} × {
                        largest.height} mm.</p>}
                </div>
                {!error && (
                    <div>
                        {selected && <p><button type="button" onClick={() => setView(file, { paper: null })}>
                            New paper</button></p>}
                        <PaperForm file={file} paper={selected} />
                    </div>
                )}
            </div>
        </>
    );
}
