const { activeDocument } = require('korvan/dom');
const { runCommand, openDocument, snapshot, undo, undoText, log } = require('korvan/testing');
const { expand } = require('../Contents/Korvan/lib/pattern');

const names = () => activeDocument().children.map((layer) => layer.name);

describe('the pattern', () => {
    const layer = { name: () => 'Sun', type: () => 'oval', frame: () => ({ width: 99.6, height: 20 }) };

    it('knows its letters', () => {
        expect(expand('%n %t %wx%h %c', layer, 7)).to.equal('07 oval 100x20 Sun');
    });

    it('leaves other letters as they are', () => {
        expect(expand('100%z', layer, 1)).to.equal('100%z');
    });
});

describe('the commands', () => {
    beforeEach(() => {
        openDocument({
            layers: [
                { id: 'sun', name: 'Sun', type: 'oval', frame: { x: 0, y: 0, width: 40, height: 40 } },
                { id: 'sky', name: 'Sky', type: 'rectangle', frame: { x: 0, y: 0, width: 300, height: 200 } },
            ],
        });
    });

    it('number all layers when none is selected', async () => {
        const { returnValue } = await runCommand('number');
        expect(returnValue).to.equal(2);
        expect(names()).to.deep.equal(['01 Sun', '02 Sky']);
    });

    it('number only what is selected', async () => {
        activeDocument().selection = [activeDocument().find('#sky')];
        await runCommand('number');
        expect(names()).to.deep.equal(['Sun', '01 Sky']);
    });

    it('take a pattern from the application', async () => {
        await runCommand('pattern', { context: { pattern: '%t %n' } });
        expect(names()).to.deep.equal(['oval 01', 'rectangle 02']);
    });

    it('say what they do, and are undone at once', async () => {
        const before = snapshot();
        await runCommand('number');
        expect(log().map(({ text }) => text)).to.deep.equal(['Sun → 01 Sun', 'Sky → 02 Sky', 'Every layer has its name.']);
        expect(undoText()).to.equal('Number Layers');
        undo();
        expect(snapshot()).to.deep.equal(before);
    });
});
