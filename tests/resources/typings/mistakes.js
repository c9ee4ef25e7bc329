// Each line below "@ts-expect-error" is a mistake that an author has to be told of: a compiler complains of the comment when
// the line is right.

const dom = require('korvan/dom');
const settings = require('korvan/settings');
const ui = require('korvan/ui');
const { hold } = require('korvan/async');
const { register } = require('korvan/data-supplier');
const korvan = require('korvan');
const path = require('path');
const { EventEmitter } = require('events');
const { Transform } = require('stream');
const util = require('util');
const os = require('os');

/** @param {Korvan.Context<{ rounds?: number }>} context */
function onRun(context) {
    // @ts-expect-error
    settings.set('when', new Date());
    // @ts-expect-error
    settings.set('names', new Map());
    // @ts-expect-error
    settings.set('work', () => 1);
    // @ts-expect-error
    settings.update(new Map());
    settings.set('all', { a: [1, { b: null }, [true]], c: context.document.name() });
    // @ts-expect-error
    context.docment;
    // @ts-expect-error
    [...context.document.layers];
    context.document.layers().length;
    // @ts-expect-error
    context.document.layerWithId('sun');
    // @ts-expect-error
    context.document.addLayer({ name: 'without a type' });
    // @ts-expect-error
    context.selection[0].setFrame({ with: 10 });
    // @ts-expect-error
    context.selection[0].setName(7);
    // @ts-expect-error
    context.selection[0].name = 'New';
    // @ts-expect-error
    context.command.setValue_forKey('value', 'key');
    // @ts-expect-error
    context.command.setValue_forKey_onLayer(new Date(), 'key', context.selection[0]);
    // @ts-expect-error
    context.plugin.urlForResourceNamed();
    // @ts-expect-error
    context.rounds.toUpperCase();
    // @ts-expect-error
    context.scriptPath = '/elsewhere';
}

/** @param {Korvan.ApplicationContext} context */
function onStartup(context) {
    context.document?.layers();
    // @ts-expect-error
    context.document?.layer();
}

async function modules() {
    const document = dom.activeDocument() ?? dom.documents()[0];
    // @ts-expect-error
    new dom.Layer();
    // @ts-expect-error
    document.create({ type: 'square' });
    // @ts-expect-error
    document.create({ type: 'oval', size: 10 });
    // @ts-expect-error
    document.layers[0].style.fil = '#000000';
    // @ts-expect-error
    document.layers[0].frame.width = '100';
    // @ts-expect-error
    document.layers.push(document.layers[0]);
    // @ts-expect-error
    document.layers[0].id = 'other';
    // @ts-expect-error
    dom.from('sun');
    // @ts-expect-error
    settings.set('key');
    // @ts-expect-error
    settings.get(7);
    // @ts-expect-error
    settings.of('layer');
    // @ts-expect-error
    ui.alert({ text: 'without a title' });
    // @ts-expect-error
    ui.alert({ title: 'Title', style: 'error' });
    // @ts-expect-error
    (await ui.askChoice({ title: 'Choice' }));
    // @ts-expect-error
    ui.withProgress('Working');
    // @ts-expect-error
    hold().isEnded = true;
    // @ts-expect-error
    register({ name: 'Names', kind: 'sound', supply: () => [] });
    // @ts-expect-error
    register({ name: 'Names', kind: 'text' });
    // @ts-expect-error
    korvan.documents();
    // @ts-expect-error
    korvan.version = '1';
    // @ts-expect-error
    require('korvan/domm').activeDocument;
}

async function nodeAndWeb() {
    // @ts-expect-error
    path.join('folder', 7);
    // @ts-expect-error
    new EventEmitter().on('event');
    // @ts-expect-error
    new Transform({ transform: 'upper case' });
    // @ts-expect-error
    util.parseArgs({});
    // @ts-expect-error
    os.setPriority(0);
    // @ts-expect-error
    Buffer.from('text', 'utf7');
    // @ts-expect-error
    new URL();
    // @ts-expect-error
    (await fetch('https://example.com/')).body;
    // @ts-expect-error
    fetch('https://example.com/', { redirect: 'never' });
    // @ts-expect-error
    require('fs').readFileSync;
    // @ts-expect-error
    setTimeout('print(1)');
    // @ts-expect-error
    window.alert('There are no windows here');
    // @ts-expect-error
    process.cwd = 7;
    // @ts-expect-error
    console.logg('Done');
}
