// Loads the module when a stream is first given an encoding.
module.exports = {
    StringDecoder: function (encoding) {
        const { StringDecoder } = require('string_decoder');
        return new StringDecoder(encoding);
    },
};
