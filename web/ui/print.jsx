// The chart of a file as the library draws it, to look at and to print at its true size.
import { useEffect, useMemo, useState } from 'preact/hooks';
import { app, isTable } from './app.js';
import { Dialog } from './dialogs.jsx';
import { Scene } from './scene.jsx';
import { plural } from './words.js';

const sheets = ['A4', 'A3', 'A2', 'A1', 'A0', 'Letter', 'Legal', 'Tabloid'];
const orientations = { landscape: 'landscape', portrait: 'portrait' };

/** Prints pages of this size. */
function usePageSize(page) {
    useEffect(() => {
        const style = new CSSStyleSheet();
        style.replaceSync(`@page { size: ${page.width}mm ${page.height}mm; margin: 0; }`);
        document.adoptedStyleSheets = [...document.adoptedStyleSheets, style];
        return () => {
            document.adoptedStyleSheets = document.adoptedStyleSheets.filter((other) => other !== style);
        };
    }, [page.width, page.height]);
}

function Choice({ label, value, choices, onChange }) {
    return (
        <label>{label} <select value={value} onChange={(event) => onChange(event.target.value)}>
            <option value="">automatic</option>
            {Object.entries(choices).map(([key, text]) => <option key={key} value={key}>{text}</option>)}
        </select></label>
    );
}

function Check({ label, checked, onChange }) {
    return (
        <label><input type="checkbox" checked={checked}
            onChange={(event) => onChange(event.target.checked)} /> {label}</label>
    );
}

export function PrintDialog({ dialog: { file } }) {
    const [options, setOptions] = useState({ title: file.name, sheet: '', orientation: '', dpi: 0,
        gather: false, device_papers: false });
    const set = (name) => (value) => setOptions({ ...options, [name]: value });
    const scene = useMemo(() => app.workspace.document(file).json('platen_chart', 'json',
        JSON.stringify(options)), [options]);
    usePageSize(scene.pages[0]);
    const [{ width, height }] = scene.pages;
    return (
        <Dialog title={`Chart of ${file.name}`} action="Print" wide onDone={() => {
            window.print();
            return false;
        }}>
            <div class="controls inner">
                <Choice label="Sheet" value={options.sheet} onChange={set('sheet')}
                    choices={Object.fromEntries(sheets.map((sheet) => [sheet, sheet]))} />
                <Choice label="Turned" value={options.orientation} onChange={set('orientation')}
                    choices={orientations} />
                {isTable(app.workspace.kind(file)) ? <>
                    <Check label="Equal styles share a row" checked={options.gather} onChange={set('gather')} />
                    <label>Weights of a device of <input type="number" min="0" class="dots" placeholder="any"
                        onChange={(event) => set('dpi')(Number(event.target.value))} /> dots per inch</label>
                </> : <Check label="Papers of the device, too" checked={options.device_papers}
                    onChange={set('device_papers')} />}
            </div>
            <p class="quiet">{plural(scene.pages.length, 'page')} of {width} × {height} mm. Choose 100 % or
                “actual size” in the printer’s dialog: lines then have their true weight.</p>
            <div class="chart" tabIndex={0} role="region" aria-label="Chart"><Scene scene={scene} /></div>
        </Dialog>
    );
}
