const { openDocument, runCommand } = require('korvan/testing');

it('counts the layers', async () => {
    openDocument({ layers: [{ id: 'sun', name: 'Sun', type: 'oval', frame: { x: 0, y: 0, width: 40, height: 40 } }] });
    const { returnValue } = await runCommand('run');
    expect(returnValue).to.equal(1);
});
