const { version } = require('korvan');
const { whileRunning } = require('korvan/async');
const { activeDocument } = require('korvan/dom');
const settings = require('korvan/settings');
const ui = require('korvan/ui');

const SIZE = { width: 120, height: 168 };
const GAP = 16;

async function makeCards() {
    const document = activeDocument();
    if (document === null) {
        await ui.alert({ title: 'There is no document to put the cards into.', style: 'warning' });
        return 0;
    }
    const value = settings.get('count', 3);
    // Without anybody to ask it makes as many as the last time.
    const count = await ui.askNumber({ title: 'How many cards?', value, minimum: 1, maximum: 52 }) ?? value;
    settings.set('count', count);
    const deck = document.create({ type: 'group', name: 'Deck' });
    settings.of(deck).set('madeWith', version);
    await whileRunning(() => ui.withProgress({ title: 'Making cards', total: count }, async (progress) => {
        for (let i = 0; i < count && !progress.isCancelled; ++i) {
            deck.create(card(i));
            progress.value += 1;
            await progress.pause();
        }
    }));
    document.selection = [deck];
    ui.message(`Made ${deck.children.length} cards.`);
    return deck.children.length;
}

/** @returns {import('korvan/dom').NewLayer} */
function card(index) {
    const x = index * (SIZE.width + GAP);
    return {
        type: 'group',
        name: `Card ${index + 1}`,
        frame: { x, y: 0, ...SIZE },
        children: [
            { type: 'rectangle', name: 'Paper', frame: { x, y: 0, ...SIZE }, style: { fill: '#FFFFFF', cornerRadius: 8 } },
            { type: 'text', name: 'Title', frame: { x: x + 12, y: 12, width: 96, height: 24 }, style: { fontSize: 17 } },
        ],
    };
}
