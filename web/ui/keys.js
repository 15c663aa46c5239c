// Moving by keys within what belongs together: tool bars and tabs.

/** Left, right, home and end go to the other elements that fit. */
export const moveWithin = (selector) => (event) => {
    const all = [...event.currentTarget.querySelectorAll(selector)];
    const place = all.indexOf(document.activeElement);
    const next = { ArrowLeft: place - 1, ArrowRight: place + 1, Home: 0, End: all.length - 1 }[event.key];
    if (place >= 0 && next !== undefined) {
        event.preventDefault();
        const element = all[(next + all.length) % all.length];
        element.focus();
        if (element.getAttribute('role') === 'tab') {
            element.click();
        }
    }
};

/** How many elements of a list that wraps stand in its first row. */
export function columnsOf(list) {
    const [first] = list.children;
    return [...list.children].findIndex((child) => child.offsetTop !== first.offsetTop);
}
