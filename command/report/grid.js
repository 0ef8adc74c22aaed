"use strict";

// Makes an element with the properties given and the children appended; texts are never read as HTML.
function make(name, properties, ...children) {
    const element = document.createElement(name);
    for (const [key, value] of Object.entries(properties || {})) {
        if (key in element) {
            element[key] = value;
        } else {
            element.setAttribute(key, value);
        }
    }
    element.append(...children);
    return element;
}

// Returns the text with the parts that match a term in marks.
function marked(text, terms) {
    const lower = text.toLowerCase();
    const parts = [];
    let end = 0;
    for (;;) {
        const hits = terms.map((term) => ({at: lower.indexOf(term, end), length: term.length})).filter((hit) => hit.at >= 0);
        if (hits.length === 0 || lower.length !== text.length) {
            return [...parts, text.slice(end)];
        }
        const first = hits.reduce((best, hit) => (hit.at < best.at || (hit.at === best.at && hit.length > best.length) ? hit : best));
        parts.push(text.slice(end, first.at), make("mark", {}, text.slice(first.at, first.at + first.length)));
        end = first.at + first.length;
    }
}

// Shows rows of equal height in a window, however many there are: only those in sight are in the document. The table has
// the focus and names its active row, as the pattern for grids has it.
class Grid {
    // A column has a title, a width, and a function that returns the text of a row, perhaps one for its class.
    constructor(box, label, columns, onActive) {
        this.box = box;
        this.columns = columns;
        this.onActive = onActive || (() => {});
        this.rows = [];
        this.terms = [];
        this.active = -1;
        this.body = make("tbody");
        const heads = columns.map((column) => make("th", {scope: "col", style: `width:${column.width}`}, column.title));
        this.table = make("table", {role: "grid", tabIndex: 0, id: `${box.id}-grid`, "aria-label": label,
                                    "aria-colcount": columns.length},
                          make("thead", {}, make("tr", {"aria-rowindex": 1}, ...heads)), this.body);
        this.sizer = make("div", {}, this.table);
        box.addEventListener("scroll", () => this.draw());
        this.table.addEventListener("keydown", (event) => this.onKey(event));
        this.body.addEventListener("click", (event) => this.onClick(event));
        addEventListener("resize", () => this.draw());
    }

    show(rows, terms) {
        this.rows = rows;
        this.terms = terms || [];
        this.active = -1;
        if (rows.length === 0) {
            this.sizer.remove();
            return;
        }
        if (!this.sizer.isConnected) {
            this.box.append(this.sizer);
        }
        this.table.setAttribute("aria-rowcount", rows.length + 1);
        this.box.scrollTop = 0;
        this.drawn = null;
        this.draw();
    }

    get rowHeight() { return this.table.tHead.offsetHeight; }

    // Draws the rows in sight and some around them.
    draw() {
        const height = this.rowHeight;
        if (this.rows.length === 0 || height === 0) {
            return;
        }
        const inSight = Math.ceil(this.box.clientHeight / height) || 1;
        const first = Math.max(0, Math.min(Math.floor(this.box.scrollTop / height) - 10, this.rows.length - inSight - 10));
        const last = Math.min(this.rows.length, first + inSight + 20);
        const wanted = `${first} ${last} ${this.active}`;
        if (wanted === this.drawn) {
            return;
        }
        this.drawn = wanted;
        this.sizer.style.height = `${(this.rows.length + 1) * height + 1}px`;
        this.sizer.style.paddingTop = `${first * height}px`;
        const rows = [];
        for (let number = first; number < last; ++number) {
            rows.push(this.rowOf(number));
        }
        this.body.replaceChildren(...rows);
        const isThere = this.active >= first && this.active < last;
        this.table[isThere ? "setAttribute" : "removeAttribute"]("aria-activedescendant", `${this.box.id}-${this.active}`);
    }

    rowOf(number) {
        const row = this.rows[number];
        const cells = this.columns.map((column) => {
            const text = column.text(row);
            return make("td", {title: text, className: column.kind ? column.kind(row) : ""}, ...marked(text, this.terms));
        });
        return make("tr", {id: `${this.box.id}-${number}`, "aria-rowindex": number + 2,
                           "aria-selected": String(number === this.active)}, ...cells);
    }

    choose(number) {
        this.active = Math.max(0, Math.min(number, this.rows.length - 1));
        const height = this.rowHeight;
        const top = this.active * height;
        // The heading covers the first row of the window.
        if (top < this.box.scrollTop) {
            this.box.scrollTop = top;
        } else if (top + 2 * height > this.box.scrollTop + this.box.clientHeight) {
            this.box.scrollTop = top + 2 * height - this.box.clientHeight;
        }
        this.draw();
        this.onActive(this.rows[this.active]);
    }

    onKey(event) {
        const page = Math.max(1, Math.floor(this.box.clientHeight / this.rowHeight) - 2);
        const targets = {ArrowDown: this.active + 1, ArrowUp: this.active - 1, PageDown: this.active + page,
                         PageUp: this.active - page, Home: 0, End: this.rows.length - 1};
        if (event.key in targets && !event.ctrlKey && !event.altKey && !event.metaKey) {
            event.preventDefault();
            this.choose(targets[event.key]);
        }
    }

    onClick(event) {
        const row = event.target.closest("tr");
        if (row && getSelection().isCollapsed) {
            this.table.focus({preventScroll: true});
            this.choose(Number(row.getAttribute("aria-rowindex")) - 2);
        }
    }

    focus() {
        if (this.rows.length > 0) {
            this.table.focus();
            this.choose(Math.max(this.active, 0));
        }
    }
}
