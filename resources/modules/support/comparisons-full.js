module.exports = require('npm:assert/build/internal/util/comparisons');
