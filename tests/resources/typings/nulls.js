// What only authors are told of who ask for it ("strictNullChecks"): a value that may be null or undefined.

const dom = require('korvan/dom');
const ui = require('korvan/ui');

/** @param {Korvan.Context<{ rounds?: number }>} context */
async function onRun(context) {
    // @ts-expect-error
    context.document.layerWithID('sun').name();
    // @ts-expect-error
    context.selection[0].text().length;
    // @ts-expect-error
    context.command.identifier().length;
    // @ts-expect-error
    context.rounds.toFixed();
    // @ts-expect-error
    dom.activeDocument().find('text');
    // @ts-expect-error
    dom.documents()[0].find('text').name;
    // @ts-expect-error
    (await ui.askText('Name')).length;
    // @ts-expect-error
    (await ui.alert('Title')).length;
}

/** @param {Korvan.ApplicationContext} context */
function onStartup(context) {
    // @ts-expect-error
    context.document.layers();
    // @ts-expect-error
    context.selection.length;
}
