// What is wrong with a file, and what can be done about it.
import { app, attempt, openDialog, say } from './app.js';
import { plural } from './words.js';

/** {findings, fixable, error}: of a file that cannot be read, why. */
function knownOf(file) {
    return app.workspace.know(file, 'wrong', () => {
        try {
            return { ...app.workspace.document(file).json('platen_document_findings'), error: null };
        } catch (error) {
            return { findings: [], omitted: 0, error };
        }
    });
}

export function findingCount(file) {
    const { findings, omitted, error } = knownOf(file);
    return findings.length + omitted + (error ? 1 : 0);
}

/** What a repair would do: {report, bytes}, without doing it. */
function repairOf(file, safeOnly) {
    return app.workspace.know(file, `repair ${safeOnly}`, () => {
        const { report, handle } = app.workspace.engine.repair(file.bytes, file.path, safeOnly);
        const bytes = handle?.bytes('platen_document_bytes') ?? null;
        handle?.destroy();
        return { report, bytes };
    });
}

export function repair(file, safeOnly) {
    attempt(() => {
        const { report, bytes } = repairOf(file, safeOnly);
        if (report.outcome === 'unchanged') {
            say(safeOnly ? 'Nothing can be fixed without guessing. Repair goes further.'
                : 'There is nothing to repair.');
        } else {
            openDialog('repair', { file, safeOnly, report, bytes });
        }
    });
}

const place = (finding) => [finding.line != null && `line ${finding.line}`,
    finding.line == null && finding.offset != null && `byte ${finding.offset}`, finding.path]
    .filter(Boolean).join(', ');

function Finding({ finding }) {
    return (
        <li class={finding.severity}>
            <p><strong>{finding.severity === 'error' ? 'Error' : 'Warning'}</strong> {finding.message}</p>
            <p class="quiet">{place(finding)}</p>
            {(finding.expected || finding.found) && (
                <p class="quiet">
                    {finding.found && <>found <q><bdi>{finding.found}</bdi></q></>}
                    {finding.found && finding.expected && ', '}
                    {finding.expected && <>expected <q><bdi>{finding.expected}</bdi></q></>}
                </p>
            )}
            {finding.remedy && <p>{finding.remedy}</p>}
        </li>
    );
}

export function Findings({ file }) {
    const { findings, omitted, error } = knownOf(file);
    const count = findingCount(file);
    const fix = count > 0 && repairOf(file, true).report.outcome === 'repaired';
    const more = count > 0 && repairOf(file, false).report.outcome === 'repaired';
    return (
        <>
            <p class={count === 0 ? 'verdict good' : 'verdict'}>{count === 0
                ? 'Nothing is wrong with this file.'
                : error ? 'This file cannot be used as it is.'
                    : `${plural(count, 'thing is', 'things are')} not as they should be.`}</p>
            {error && <ul class="finding-list"><Finding finding={{ severity: 'error', message: error.message,
                path: error.place, remedy: error.remedy }} /></ul>}
            <ul class="finding-list">
                {findings.map((finding, number) => <Finding key={number} finding={finding} />)}
            </ul>
            {omitted > 0 && <p class="quiet">and {omitted} more</p>}
            <p class="tools">
                {fix && <button type="button" class="primary" onClick={() => repair(file, true)}>Fix what is certain …</button>}
                {more && <button type="button" onClick={() => repair(file, false)}>Repair …</button>}
                {count > 0 && !more && !fix && <span class="quiet">No repair is known for this.</span>}
            </p>
        </>
    );
}
