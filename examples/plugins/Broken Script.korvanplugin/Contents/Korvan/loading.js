// There is no context while the script is loaded, only in its handlers.
const layers = context.document.layers();

const onRun = () => layers.length;
