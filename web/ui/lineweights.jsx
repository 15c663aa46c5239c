// The line weights of a table. Pens name one of them, so that a change is a change of all its pens.
import { app, edit } from './app.js';
import { inRanges } from './pens.js';
import { Entry } from './style_form.jsx';

export function LineWeights({ file }) {
    const { lineweights } = app.workspace.ask(file, 'platen_lineweights');
    const what = app.workspace.kind(file) === 'ctb' ? 'Pens' : 'Styles';
    return (
        <>
            <p class="quiet hint">Pens take their line weights from this list: a change here changes all
                pens that use the weight. Write millimetres from 0 to 200, or inches such as 0.014in.</p>
            <table class="narrow">
                <thead><tr>
                    <th scope="col" class="number">No.</th><th scope="col">Millimetres</th>
                    <th scope="col">Line</th><th scope="col">{what} that use it</th>
                </tr></thead>
                <tbody>
                    {lineweights.map(({ number, millimetres, styles }) => (
                        <tr key={number}>
                            <td class="number">{number}</td>
                            <td><Entry class="length number" aria-label={`Line weight ${number} in millimetres`}
                                value={`${millimetres}`} onCommit={(text) => edit(file,
                                    `line weight ${number}: ${text}`,
                                    (document) => document.do('platen_lineweight_set', number, text.trim()))} />
                            </td>
                            <td class="drawn">
                                <svg class="line" aria-hidden="true"><line x1="0" x2="100%" y1="9.5" y2="9.5"
                                    stroke="#000000" stroke-width={`${millimetres}mm`} /></svg>
                            </td>
                            <td class="number-text">{styles.length > 0 ? inRanges(styles)
                                : <span class="quiet">none</span>}</td>
                        </tr>
                    ))}
                </tbody>
            </table>
        </>
    );
}
