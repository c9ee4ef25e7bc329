const { Transform } = require('stream');
const { StringDecoder } = require('string_decoder');

// Bytes go in, and rows, each an array of texts, come out. The bytes may end anywhere, in the middle of a letter too.
class CSVReader extends Transform {
    #decoder = new StringDecoder('utf8');
    #row = [];
    #field = '';
    #isQuoted = false;
    #latest = '';

    constructor() {
        super({ readableObjectMode: true });
    }

    _transform(bytes, encoding, done) {
        this.#read(this.#decoder.write(bytes));
        done();
    }

    _flush(done) {
        this.#read(this.#decoder.end());
        if (this.#row.length > 0 || this.#field !== '')
            this.#endRow();
        done();
    }

    #read(text) {
        for (const letter of text) {
            if (letter === '"')
                this.#readQuote();
            else if (this.#isQuoted)
                this.#field += letter;
            else if (letter === ',')
                this.#endField();
            else if (letter === '\n')
                this.#endRow();
            else if (letter !== '\r')
                this.#field += letter;
            this.#latest = letter;
        }
    }

    // Two quotes in a quoted field stand for one.
    #readQuote() {
        if (!this.#isQuoted && this.#latest === '"')
            this.#field += '"';
        this.#isQuoted = !this.#isQuoted;
    }

    #endField() {
        this.#row.push(this.#field);
        this.#field = '';
    }

    #endRow() {
        this.#endField();
        this.push(this.#row);
        this.#row = [];
    }
}

module.exports = { CSVReader };
