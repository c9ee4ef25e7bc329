function onRun(context) {
    print(`hello, ${context.who ?? 'nobody'}`);
}
