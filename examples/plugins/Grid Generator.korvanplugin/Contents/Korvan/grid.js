// What the context may give: columns, rows, width, height, gap. Everything has a usual value.
class Grid {
    constructor({ columns = 4, rows = 3, width = 80, height = 60, gap = 10 }) {
        Object.assign(this, { columns, rows, width, height, gap });
    }

    *cells() {
        for (let row = 0; row < this.rows; ++row) {
            for (let column = 0; column < this.columns; ++column)
                yield { row, column };
        }
    }

    frame({ row, column }) {
        return {
            x: column * (this.width + this.gap), y: row * (this.height + this.gap),
            width: this.width, height: this.height,
        };
    }
}

function draw(document, grid, name) {
    const group = document.addLayer({
        name, type: 'group', frame: {
            x: 0, y: 0, width: grid.columns * (grid.width + grid.gap) - grid.gap,
            height: grid.rows * (grid.height + grid.gap) - grid.gap,
        },
    });
    for (const cell of grid.cells()) {
        group.addLayer({
            name: `${cell.row + 1}.${cell.column + 1}`, type: 'rectangle', frame: grid.frame(cell),
            style: { fill: '#D8E2F0' },
        });
    }
    document.setSelection([group]);
    console.log('%s: %d cells', name, group.layers().length);
    return group.layers().length;
}

function optionsOf(context) {
    const { columns, rows, width, height, gap } = context;
    return { columns, rows, width, height, gap };
}

function onRun(context) {
    return draw(context.document, new Grid(optionsOf(context)), 'Grid');
}

function onColumns(context) {
    return draw(context.document, new Grid({ columns: 12, width: 60, gap: 20, rows: 1, height: 900 }), 'Columns');
}
