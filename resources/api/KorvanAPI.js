// "korvan": all modules of this application in one, and its version. Each is loaded when it is first used.
'use strict';

module.exports = {
    get async() { return require('korvan/async'); },
    get dataSupplier() { return require('korvan/data-supplier'); },
    get dom() { return require('korvan/dom'); },
    get settings() { return require('korvan/settings'); },
    get ui() { return require('korvan/ui'); },

    /** The application's version, such as "98.3". */
    get version() { return require('host:application').version; },
};
