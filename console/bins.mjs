// The digit bins: a table for each class, a row for each bin.
import { card, el, field } from './console.mjs';
import { helpOf, t, titleOf } from './texts.mjs';

/** The number at the end of a bin's key, or its place. */
const numberOf = (draft, place) => /_(\d+)$/.exec(draft.instance.title)?.[1] ?? String(place);

function headOf(cls, columns) {
    return el('thead', {}, el('tr', {}, el('th', { scope: 'col' }, t('row')), ...columns.map((property) =>
        el('th', { scope: 'col' }, titleOf(cls, property), el('span', { class: 'help' }, helpOf(cls, property))))));
}

function tableOf(app, cls) {
    const columns = cls.properties.filter(({ writable }) => writable);
    const fields = [];
    const rows = app.draftsOf(cls).map((draft, place) => {
        const row = numberOf(draft, place);
        const cells = columns.map((property) =>
            field(app, cls, draft, property, { label: t('cell', { title: titleOf(cls, property), row }) }));
        fields.push(...cells);
        return el('tr', {}, el('th', { scope: 'row' }, row), ...cells.map(({ element }) => el('td', {}, element)));
    });
    return { fields, element: el('table', {}, headOf(cls, columns), el('tbody', {}, ...rows)) };
}

export function view(app, page) {
    const tables = page.classes.map((cls) => ({ cls, ...tableOf(app, cls) }));
    return {
        element: el('div', { class: 'cards pair' },
            ...tables.map(({ cls, element }) => card(titleOf(cls), helpOf(cls), element))),
        show: () => tables.forEach(({ fields }) => fields.forEach((one) => one.show())),
    };
}
