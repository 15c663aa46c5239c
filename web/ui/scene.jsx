// Draws the scenes that the library makes of charts: pages in millimetres, at their true size.

const strokeOf = ({ stroke }) => (stroke ? { stroke: stroke.color, 'stroke-width': stroke.width,
    'stroke-linecap': stroke.cap, 'stroke-linejoin': stroke.join,
    'stroke-dasharray': stroke.dash.length > 0 ? stroke.dash.join(' ') : undefined } : {});

const painters = {
    rectangle: (shape) => <rect x={shape.x} y={shape.y} width={shape.width} height={shape.height}
        rx={shape.radius} fill={shape.fill ?? 'none'} {...strokeOf(shape)} />,
    polyline: (shape) => {
        const Shape = shape.closed ? 'polygon' : 'polyline';
        return <Shape points={shape.points.join(' ')} fill={shape.fill ?? 'none'} {...strokeOf(shape)} />;
    },
    text: (shape) => <text x={shape.x} y={shape.y} font-size={shape.size} fill={shape.color}
        font-weight={shape.bold ? 700 : undefined} text-anchor={shape.anchor}>{shape.text}</text>,
};

/** A group that is clipped is a picture within the picture, which ends at its edges. */
function groupOf({ title, clip }, inside) {
    const titled = title === '' ? inside : [<title>{title}</title>, ...inside];
    return clip ? <svg x={clip.x} y={clip.y} width={clip.width} height={clip.height}
        viewBox={`${clip.x} ${clip.y} ${clip.width} ${clip.height}`}>{titled}</svg> : <g>{titled}</g>;
}

function drawn(shapes) {
    const open = [{ inside: [] }];
    for (const shape of shapes) {
        if (shape.kind === 'group') {
            open.push({ shape, inside: [] });
        } else if (shape.kind === 'end') {
            const { shape: group, inside } = open.pop();
            open.at(-1).inside.push(groupOf(group, inside));
        } else {
            open.at(-1).inside.push(painters[shape.kind](shape));
        }
    }
    return open[0].inside;
}

export const Scene = ({ scene }) => scene.pages.map((page, number) => (
    <svg key={number} class="page" role="img" aria-label={number === 0 ? scene.description
        : `${scene.title}, page ${number + 1}`} width={`${page.width}mm`} height={`${page.height}mm`}
        viewBox={`0 0 ${page.width} ${page.height}`} font-family="sans-serif">{drawn(page.shapes)}</svg>
));
