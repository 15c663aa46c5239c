// Charts for paper: by the library where the module has them, and otherwise a list of the same pens.
// Printed at 100 % everything has its true size.
import { useEffect, useState } from 'preact/hooks';
import { app, isTable } from './app.js';
import { Dialog } from './dialogs.jsx';
import { Line } from './pen_list.jsx';
import { pensOf } from './pens.js';
import { PaperDrawing } from './papers.jsx';

const chartFunction = 'platen_chart_svg';

/** A picture of the chart as an address, or null. An image runs no scripts, whatever names are in it. */
function useChart(file) {
    const [address, setAddress] = useState(null);
    useEffect(() => {
        if (!app.workspace.engine.has(chartFunction)) {
            return undefined;
        }
        const svg = app.workspace.document(file).bytes(chartFunction, null);
        const made = URL.createObjectURL(new Blob([svg], { type: 'image/svg+xml' }));
        setAddress(made);
        return () => URL.revokeObjectURL(made);
    }, [file]);
    return address;
}

function PenChart({ file }) {
    return (
        <div class="print-pens">
            {pensOf(file).map((pen) => (
                <div key={pen.number}><b>{pen.short}</b><Line pen={pen} />
                    <span>{pen.weight === null ? 'object’s' : `${pen.weight.toFixed(2)} mm`}{
                        pen.screening !== '100' ? ` ${pen.screening} %` : ''}</span></div>
            ))}
        </div>
    );
}

function PaperChart({ file }) {
    const handle = app.workspace.engine.papers(file.path);
    const { papers } = handle.json('platen_papers_list');
    handle.destroy();
    return papers.length > 0 ? <PaperDrawing papers={papers} /> : <p>No custom papers.</p>;
}

export function PrintDialog({ dialog: { file } }) {
    const address = useChart(file);
    const Own = isTable(app.workspace.kind(file)) ? PenChart : PaperChart;
    return (
        <Dialog title={`Print a chart of ${file.name}`} action="Print" wide onDone={() => {
            window.print();
            return false;
        }}>
            <p class="quiet">Choose 100 % or “actual size” in the printer’s dialog: lines then have their true weight.</p>
            <div class="chart" tabIndex={0} role="region" aria-label="Chart">
                <h2 class="print-only"><bdi>{file.name}</bdi></h2>
                {address ? <img src={address} alt={`Chart of ${file.name}`} /> : <Own file={file} />}
                <div class="scale-bar" aria-hidden="true"><span>50 mm</span></div>
            </div>
        </Dialog>
    );
}
