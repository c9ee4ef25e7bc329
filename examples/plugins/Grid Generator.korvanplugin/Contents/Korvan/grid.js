/**
 * What the context may give. Everything has a usual value.
 * @typedef {{ columns?: number, rows?: number, width?: number, height?: number, gap?: number }} GridOptions
 */


class Grid {
    /** @param {GridOptions} options */
    constructor({ columns = 4, rows = 3, width = 80, height = 60, gap = 10 }) {
        this.columns = columns;
        this.rows = rows;
        this.width = width;
        this.height = height;
        this.gap = gap;
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

/**
 * @param {Korvan.Document} document
 * @param {Grid} grid
 * @param {string} name
 */
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

/** @param {Korvan.Context<GridOptions>} context */
function optionsOf(context) {
    const { columns, rows, width, height, gap } = context;
    return { columns, rows, width, height, gap };
}

/** @param {Korvan.Context<GridOptions>} context */
function onRun(context) {
    return draw(context.document, new Grid(optionsOf(context)), 'Grid');
}

/** @param {Korvan.Context} context */
function onColumns(context) {
    return draw(context.document, new Grid({ columns: 12, width: 60, gap: 20, rows: 1, height: 900 }), 'Columns');
}
