// The same modules under their longer names.

declare module 'node:buffer' {
    import module = require('buffer');
    export = module;
}
declare module 'node:console' {
    import module = require('console');
    export = module;
}
declare module 'node:events' {
    import module = require('events');
    export = module;
}
declare module 'node:os' {
    import module = require('os');
    export = module;
}
declare module 'node:path' {
    import module = require('path');
    export = module;
}
declare module 'node:process' {
    import module = require('process');
    export = module;
}
declare module 'node:querystring' {
    import module = require('querystring');
    export = module;
}
declare module 'node:stream' {
    import module = require('stream');
    export = module;
}
declare module 'node:string_decoder' {
    import module = require('string_decoder');
    export = module;
}
declare module 'node:timers' {
    import module = require('timers');
    export = module;
}
declare module 'node:util' {
    import module = require('util');
    export = module;
}
