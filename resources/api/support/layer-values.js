// What scripts may give layers: each check answers the value as the application takes it, or throws an error that tells
// what would be right.
'use strict';

const { describe, article, suggestion, checkKeys, checkText, checkNumber } = require('./describe.js');
const { checkImagePlace } = require('./image-place.js');

const FRAME_KEYS = ['x', 'y', 'width', 'height'];
const CREATE_KEYS = ['type', 'name', 'frame', 'style', 'text', 'image', 'children', 'index'];

function checkType(document, type) {
    const types = document.hostObject.layerTypes?.();
    if (types !== undefined && !types.includes(type)) {
        throw new TypeError(`A new layer needs a type (${types.join(', ')}), but was given ${describe(type)}.`
            + suggestion(type, types));
    }
    return checkText(type, 'The type of a new layer');
}

function checkStyle(document, type, style) {
    if (typeof style !== 'object' || style === null || Array.isArray(style))
        throw new TypeError(`A style has to be an object such as { fill: '#FF0000' }, but is ${describe(style)}.`);
    for (const key of Object.keys(style)) {
        checkStyleKey(document, type, key);
        checkStyleValue(key, style[key]);
    }
    return { ...style };
}

function checkStyleKey(document, type, key) {
    const keys = document.hostObject.styleKeys?.(type);
    if (keys !== undefined && !keys.includes(key)) {
        throw new TypeError(`The style of ${article(type)} layer has no key "${key}".${suggestion(key, keys)} `
            + `It has: ${keys.join(', ')}.`);
    }
}

function checkStyleValue(key, value) {
    const isPlain = typeof value === 'string' || typeof value === 'boolean' || Number.isFinite(value);
    if (!isPlain) {
        throw new TypeError(`The style's "${key}" has to be a text, a number or a boolean, but is ${describe(value)}. `
            + 'Delete the key to take it out of the style.');
    }
    if (key === 'opacity' && !(typeof value === 'number' && value >= 0 && value <= 1))
        throw new RangeError(`The style's "opacity" has to be a number from 0 to 1, but is ${describe(value)}.`);
}

function checkFrame(frame) {
    if (typeof frame !== 'object' || frame === null || Array.isArray(frame)) {
        throw new TypeError(`A frame has to be an object such as { x: 0, y: 0, width: 10, height: 10 }, but is `
            + `${describe(frame)}.`);
    }
    for (const key of Object.keys(frame))
        checkFrameValue(key, frame[key]);
    return { ...frame };
}

function checkFrameValue(key, value) {
    if (!FRAME_KEYS.includes(key))
        throw new TypeError(`A frame has no "${key}".${suggestion(key, FRAME_KEYS)} It has: ${FRAME_KEYS.join(', ')}.`);
    checkNumber(value, `The frame's "${key}"`);
    if (value < 0 && (key === 'width' || key === 'height'))
        throw new RangeError(`The frame's "${key}" cannot be less than 0, but is ${value}.`);
}

function checkIndex(index) {
    if (index !== Infinity && !(Number.isInteger(index) && index >= 0))
        throw new TypeError(`The index of a layer has to be 0 or a whole number above it, but is ${describe(index)}.`);
    return Math.min(index, 0x7fffffff);
}

/** Checks what a new layer, and the layers in it, are to be like before anything is made. */
function checkValues(document, values) {
    checkKeys(values, CREATE_KEYS, 'create()');
    const type = checkType(document, values.type);
    const checked = { type, name: checkText(values.name ?? type[0].toUpperCase() + type.slice(1), 'The name') };
    checked.frame = { x: 0, y: 0, width: 100, height: 100, ...checkFrame(values.frame ?? {}) };
    if (values.style !== undefined)
        checked.style = checkStyle(document, type, values.style);
    if (type === 'text' || values.text !== undefined)
        checked.text = checkContent(type, 'text', values.text ?? '');
    if (values.image !== undefined)
        checked.image = checkContent(type, 'image', values.image);
    const children = values.children ?? [];
    if (!Array.isArray(children))
        throw new TypeError(`The children of a new group have to be an array, but are ${describe(children)}.`);
    if (children.length > 0 && type !== 'group')
        throw new TypeError(`Only groups have children; this is ${article(type)} layer.`);
    return { checked, children: Array.from(children, (child) => checkValues(document, child)) };
}

function checkContent(type, key, value) {
    if (type !== key)
        throw new TypeError(`Only ${key} layers have ${article(key)}; this is ${article(type)} layer.`);
    if (key === 'text')
        return checkText(value, 'The text of a layer');
    return value === null ? null : checkImagePlace(value, 'The image of a layer');
}

module.exports = {
    checkStyle, checkStyleKey, checkStyleValue, checkFrame, checkFrameValue, checkIndex, checkContent, checkValues,
};
