const { register } = require('korvan/data-supplier');

const names = ['Ada', 'Alan', 'Grace', 'Katherine', 'Linus', 'Margaret'];

/** @param {number} index */
const nameAt = (index) => names[index % names.length];

// Called when the application starts: what is registered here, users can put into layers. The command keeps running for it.
function offerNames() {
    register({ name: 'Names', kind: 'text', supply: ({ layers }) => layers.map((layer, index) => nameAt(index)) });
}

/**
 * For the menu: names into the selected text layers, or into all of them.
 * @param {Korvan.Context} context
 */
function fillTexts(context) {
    if (!context.document) {
        console.log('There is no document.');
        return 0;
    }
    const chosen = context.selection.length > 0 ? context.selection : context.document.allLayers();
    const texts = chosen.filter((layer) => layer.type() === 'text');
    texts.forEach((layer, index) => layer.setText(nameAt(index)));
    console.log(`${texts.length} texts filled`);
    return texts.length;
}
