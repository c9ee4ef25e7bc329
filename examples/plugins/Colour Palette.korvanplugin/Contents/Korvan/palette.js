const console = require('console');

/** @param {string} colour */
const channels = (colour) => [1, 3, 5].map((start) => parseInt(colour.slice(start, start + 2), 16));

function luminance(colour) {
    const [red, green, blue] = channels(colour).map((value) => {
        const share = value / 255;
        return share <= 0.03928 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}

function contrast(first, second) {
    const [light, dark] = [luminance(first), luminance(second)].sort((a, b) => b - a);
    return (light + 0.05) / (dark + 0.05);
}

/** @param {Korvan.Document} document */
function coloursOf(document) {
    const counts = new Map();
    for (const layer of document.allLayers()) {
        for (const value of Object.values(layer.style())) {
            if (typeof value === 'string' && /^#[0-9a-f]{6}$/i.test(value))
                counts.set(value.toUpperCase(), (counts.get(value.toUpperCase()) ?? 0) + 1);
        }
    }
    return [...counts].sort(([, first], [, second]) => second - first);
}

/** @param {Korvan.Context} context */
function onRun(context) {
    const colours = coloursOf(context.document);
    console.table(colours.map(([colour, uses]) => ({ colour, uses, luminance: luminance(colour).toFixed(2) })));
    colours.forEach(([first], index) => {
        for (const [second] of colours.slice(index + 1)) {
            if (contrast(first, second) < 1.2)
                console.warn(`${first} and ${second} are hard to tell apart.`);
        }
    });
    return Object.fromEntries(colours);
}
