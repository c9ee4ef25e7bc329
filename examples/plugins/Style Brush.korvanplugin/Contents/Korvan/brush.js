const korvan = require('korvan');
const { hold } = require('korvan/async');
const { register } = require('korvan/data-supplier');
const { activeDocument } = require('korvan/dom');
const settings = require('korvan/settings');
const ui = require('korvan/ui');

let painting;

async function takeStyle() {
    const [layer] = activeDocument()?.selection ?? [];
    if (layer === undefined) {
        await ui.alert({ title: 'Select a layer first.', text: 'Its style becomes that of the brush.', style: 'warning' });
        return;
    }
    settings.set('style', { ...layer.style });
    ui.message(`The brush has the style of ${layer}.`);
}

// Layers of another type take what they have a use for.
function paint(layer, style) {
    let painted = 0;
    for (const [key, value] of Object.entries(style)) {
        try {
            layer.style[key] = value;
            ++painted;
        } catch (error) {
            console.log(error.message);
        }
    }
    settings.of(layer).set('paintedWith', korvan.version);
    return painted;
}

function paintSelection() {
    const style = settings.get('style', {});
    const selected = activeDocument()?.selection ?? [];
    return selected.filter((layer) => layer.type !== 'group' && paint(layer, style) > 0).length;
}

// Hosts tell it of every selection, also while the brush is put away.
function paintWhatWasSelected() {
    return painting === undefined ? 0 : paintSelection();
}

function startPainting() {
    painting ??= hold();
}

function stopPainting() {
    painting?.end();
    painting = undefined;
}

// A picture of the brush's colour, for image layers.
function offerSwatches() {
    register({
        name: 'Swatch',
        kind: 'image',
        supply({ layers }) {
            const { fill = '#CCCCCC' } = settings.get('style', {});
            const picture = `<svg xmlns="http://www.w3.org/2000/svg"><rect width="100%" height="100%" fill="${fill}"/></svg>`;
            return layers.map(() => `data:image/svg+xml,${encodeURIComponent(picture)}`);
        },
    });
}
