// Statistics: the counters as large numbers, one of them as a chart over the time the page is open, then the rest.
import { card, chooser, el, field, isCount, methodButtons, reasonText } from './console.mjs';
import { helpOf, numberText, t, timeText, titleOf } from './texts.mjs';

const kWidth = 600; // of the chart's own coordinates
const kHeight = 160;

/** The readings { at, value } as points of a polyline, and the value at the upper edge. */
export function lineOf(samples, width, height) {
    const top = Math.max(1, ...samples.map(({ value }) => value));
    const [begin, end] = [samples[0].at, samples.at(-1).at];
    const point = ({ at, value }) =>
        [((at - begin) / (end - begin || 1)) * width, height - (value / top) * height].map((one) => one.toFixed(1));
    return { top, points: samples.map((one) => point(one).join(',')).join(' ') };
}

function svg(name, attributes, ...content) {
    const element = document.createElementNS('http://www.w3.org/2000/svg', name);
    Object.entries(attributes).forEach(([key, value]) => element.setAttribute(key, value));
    element.append(...content);
    return element;
}

function drawing(title, samples) {
    const { top, points } = lineOf(samples, kWidth, kHeight);
    const [first, last] = [samples[0], samples.at(-1)];
    const at = (sample) => timeText(new Date(sample.at), true);
    const text = t('chartText', { title, first: numberText(first.value), from: at(first), last: numberText(last.value),
        to: at(last), most: numberText(Math.max(...samples.map(({ value }) => value))) });
    const shape = svg('svg', { viewBox: `0 0 ${kWidth} ${kHeight}`, preserveAspectRatio: 'none', role: 'img',
        'aria-label': text });
    shape.append(...[0, 0.5, 1].map((part) =>
        svg('line', { x1: 0, x2: kWidth, y1: part * kHeight, y2: part * kHeight })));
    shape.append(svg('polygon', { points: `0,${kHeight} ${points} ${kWidth},${kHeight}` }), svg('polyline', { points }));
    const axis = (kind, ...labels) => el('div', { class: kind, 'aria-hidden': 'true' },
        ...labels.map((label) => el('span', {}, label)));
    return [axis('values', numberText(top), '0'), shape, axis('times', at(first), at(last))];
}

/** A chart of one of the counters, which a person chooses. */
function chartOf(app, cls, draft, counters) {
    const choice = chooser({ id: 'chart-of' }, counters.map((one) => [one.name, titleOf(cls, one)]));
    choice.set(counters[0].name);
    const plot = el('div', { class: 'chart' });
    const show = () => {
        const property = counters.find(({ name }) => name === choice.get());
        const samples = app.historyOf(draft, property);
        plot.replaceChildren(...(samples.length > 1 ? drawing(titleOf(cls, property), samples) : [t('chartEmpty')]));
    };
    choice.element.addEventListener('change', show);
    const control = el('div', { class: 'choice' }, el('label', { for: 'chart-of' }, t('chartOf')), choice.element);
    return { element: el('div', { class: 'history' }, el('h3', {}, t('chart')), control, plot), show };
}

function cardOf(app, cls, draft) {
    const shown = cls.properties.filter(({ isKey }) => !isKey);
    const counters = shown.filter(isCount);
    const make = (property) => field(app, cls, draft, property);
    const [tiles, others] = [counters.map(make), shown.filter((one) => !isCount(one)).map(make)];
    const reason = el('p', { class: 'note reason' });
    const chart = counters.length > 0 ? chartOf(app, cls, draft, counters) : null;
    const element = card(titleOf(cls), helpOf(cls), reason,
        el('div', { class: 'tiles' }, ...tiles.map((one) => one.element)), chart?.element,
        ...others.map((one) => one.element), methodButtons(app, cls, draft));
    const show = () => {
        const off = shown.find((property) => !draft.applies(property));
        reason.hidden = !off;
        reason.textContent = off ? reasonText(app, off) : '';
        [...tiles, ...others, ...(chart ? [chart] : [])].forEach((one) => one.show());
    };
    return { element, show };
}

export function view(app, page) {
    const made = page.classes.flatMap((cls) => app.draftsOf(cls).map((draft) => cardOf(app, cls, draft)));
    return {
        element: el('div', { class: 'cards' }, ...made.map(({ element }) => element)),
        show: () => made.forEach((one) => one.show()),
    };
}
