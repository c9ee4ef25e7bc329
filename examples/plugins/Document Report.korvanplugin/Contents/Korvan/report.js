const console = require('console');
const os = require('os');
const path = require('path');
const process = require('process');
const util = require('util');
const { activeDocument } = require('korvan/dom');

function countByType(layers) {
    const counts = {};
    for (const layer of layers)
        counts[layer.type] = (counts[layer.type] ?? 0) + 1;
    return counts;
}

// Where a layer is, as the path of a file is written: /Hills/Near Hill
function pathOf(layer) {
    return path.posix.join(layer.group ? pathOf(layer.group) : '/', layer.name.replaceAll('/', '∕'));
}

function deepest(layers) {
    const depth = (place) => place.split(path.posix.sep).length;
    return layers.map(pathOf).reduce((deep, place) => (depth(place) > depth(deep) ? place : deep), '/');
}

const megabytes = (size) => Math.round(size / 2 ** 20);

function place() {
    return {
        application: process.version,
        system: `${os.type()} ${os.release()} (${process.arch})`,
        memory: util.format('%d MB of %d MB', ...[process.memoryUsage().rss, os.totalmem()].map(megabytes)),
    };
}

function onRun() {
    const document = activeDocument();
    const { layers } = document;
    const report = { document: document.name, layers: countByType(layers), deepest: deepest(layers), ...place() };
    console.group('Report');
    console.table(report.layers);
    console.log(util.inspect(report, { breakLength: 100 }));
    console.groupEnd();
    return report;
}
