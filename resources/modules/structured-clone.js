module.exports = { structuredClone: require('npm:core-js-pure/actual/structured-clone') };
