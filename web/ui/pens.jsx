// The pens of a table, with what is selected in a form beside them.
import { app, attempt, say, setView } from './app.js';
import { PenList } from './pen_list.jsx';
import { filters, inRanges, pensOf, shownPens, sorts } from './pens.js';
import { StyleForm } from './style_form.jsx';
import { TableTools } from './table_tools.jsx';

function Choice({ label, value, choices, onChange }) {
    return (
        <label>{label} <select value={value} onChange={(event) => onChange(event.target.value)}>
            {Object.entries(choices).map(([key, text]) => <option key={key} value={key}>{text}</option>)}
        </select></label>
    );
}

export function Pens({ file, view }) {
    const pens = shownPens(file, view);
    const selected = [...view.selected].sort((one, other) => one - other);
    const selectText = (text) => attempt(() => {
        const { styles } = app.workspace.ask(file, 'platen_styles', text);
        setView(file, { selected: new Set(styles.map((style) => style.number)),
            cursor: styles[0].number, anchor: styles[0].number });
        say(`${styles.length} of ${pensOf(file).length} pens are selected.`);
    });
    return (
        <div class="pens-view">
            <div class="list">
                <div class="controls">
                    <label>Search <input type="search" value={view.search}
                        onInput={(event) => setView(file, { search: event.target.value })} /></label>
                    <Choice label="Show" value={view.filter} choices={filters}
                        onChange={(filter) => setView(file, { filter })} />
                    <Choice label="Sort by" value={view.sort}
                        choices={Object.fromEntries(Object.entries(sorts).map(([key, [text]]) => [key, text]))}
                        onChange={(sort) => setView(file, { sort })} />
                    <label>Select <input type="text" class="select" placeholder="1-9,250"
                        aria-description="Numbers such as 1-9,250, a name with * for any letters, or =7 for all pens like 7"
                        value={inRanges(selected, '-', ',')}
                        onChange={(event) => selectText(event.target.value)} /></label>
                    <div class="two" role="group" aria-label="Layout">
                        {[['grid', 'Swatches'], ['table', 'Table']].map(([layout, text]) => (
                            <button type="button" key={layout} aria-pressed={view.layout === layout}
                                onClick={() => setView(file, { layout })}>{text}</button>
                        ))}
                    </div>
                </div>
                <PenList file={file} view={view} pens={pens} />
                <TableTools file={file} view={view} />
            </div>
            <StyleForm file={file} view={view} selected={selected} />
        </div>
    );
}
