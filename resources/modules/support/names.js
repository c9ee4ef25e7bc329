// Gives functions the names that scripts print; the bundler may have given them others.
module.exports = function (functions) {
    for (const [name, value] of Object.entries(functions))
        Object.defineProperty(value, 'name', { value: name, configurable: true });
    return functions;
};
