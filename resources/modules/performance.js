const clock = require('host:clock');

exports.performance = {
    timeOrigin: clock.timeOrigin,
    now: () => clock.now(),
    toJSON() { return { timeOrigin: this.timeOrigin }; },
};
