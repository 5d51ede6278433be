// The push transfer: when as a person says it, the next run, where to, and a push at once.
import { card, chooser, el, field, input, methodButtons, valueText } from './console.mjs';
import { choicesOf, dateTimeText, t, titleOf } from './texts.mjs';

const kDaysAhead = 62; // a month without the day lies between two that have it, at most

const kSections = {
    schedule: ['TransferType', 'TransferTime', 'TransferDayOfWeek', 'TransferDayOfMonth'],
    destination: ['IPAddress', 'UserName', 'Password', 'DestFolder', 'NumRetry'],
    files: [], // and all others
};

/** The first run after `now` of a push of that type ("0" daily, "1" weekly, "2" monthly); null when there is none. */
export function nextRun({ type, time, weekday, day }, now) {
    const [hour, minute] = (time || '0:0').split(':').map(Number);
    const days = {
        0: () => true,
        1: (date) => date.getDay() === Number(weekday),
        2: (date) => date.getDate() === Number(day),
    };
    for (let ahead = 0; type in days && ahead <= kDaysAhead; ++ahead) {
        const run = new Date(now.getFullYear(), now.getMonth(), now.getDate() + ahead, hour, minute);
        if (run > now && days[type](run)) {
            return run;
        }
    }
    return null;
}

/** "8:30" as "08:30", as a time input takes it; empty when it is no time. */
export function padded(time) {
    const parts = /^(\d{1,2}):(\d{1,2})$/.exec(time);
    return parts ? parts.slice(1).map((part) => part.padStart(2, '0')).join(':') : '';
}

/** The control, but that what it shows is first changed by `normal`. */
const normalised = (control, normal) => ({ ...control, set: (value) => control.set(normal(value)) });

const kControls = {
    TransferTime: (cls, draft, property, attributes) =>
        normalised(input({ ...attributes, type: 'time', class: 'short' }), padded),
    TransferDayOfMonth: (cls, draft, property, attributes) => {
        const days = Array.from({ length: 31 }, (_, i) => [String(i + 1), t('dayOfMonth', { day: i + 1 })]);
        return normalised(chooser(attributes, days), (value) => /^\d+/.exec(value)?.[0].replace(/^0+/, '') ?? '');
    },
};

/** The schedule in words and its next run, [plan, run], with the changes that are not saved. */
function nextRunTexts(cls, draft) {
    const names = { type: 'TransferType', time: 'TransferTime', weekday: 'TransferDayOfWeek', day: 'TransferDayOfMonth' };
    const used = { 0: ['time'], 1: ['time', 'weekday'], 2: ['time', 'day'] }[draft.value(names.type)];
    if (!used) {
        return ['', t('noRun')];
    }
    const isChanged = Object.values(names).some((name) => draft.isChanged(name));
    if (used.some((one) => !draft.held(names[one]).applicable && !draft.isChanged(names[one]))) {
        return ['', t('afterSaving', { text: t('unknown') })];
    }
    const plan = Object.fromEntries(Object.entries(names).map(([one, name]) => [one, draft.value(name)]));
    const run = nextRun(plan, new Date());
    const weekday = choicesOf(cls, cls.properties.find(({ name }) => name === names.weekday))
        ?.find(([value]) => value === plan.weekday)?.[1] ?? plan.weekday;
    const words = t(['daily', 'weekly', 'monthly'][plan.type],
        { time: padded(plan.time) || '00:00', day: plan.type === '1' ? weekday : plan.day });
    const text = run ? dateTimeText(run) : t('noRun');
    return [run ? words : '', isChanged ? t('afterSaving', { text }) : text];
}

function sectionsOf(cls) {
    const listed = Object.values(kSections).flat();
    const named = (names) => names.map((name) => cls.properties.find((one) => one.name === name)).filter(Boolean);
    const others = cls.properties.filter(({ name, isKey }) => !isKey && !listed.includes(name));
    return Object.entries(kSections).map(([section, names]) =>
        [section, names.length > 0 ? named(names) : others]);
}

export function view(app, page) {
    const [cls, statistics] = page.classes;
    const [draft] = app.draftsOf(cls);
    const lastTransfer = () => {
        const [last] = statistics ? app.draftsOf(statistics) : [];
        const property = statistics?.properties.find(({ type }) => type === 'datetime');
        return property && last ? valueText(statistics, property, last.stored(property.name)) : t('never');
    };
    let before = null; // the last transfer when a push was begun here; the transfer program goes on in the background
    const methods = methodButtons(app, cls, draft,
        { begin: () => { before = lastTransfer(); }, outcome: () => t('pushBegun') });
    const next = el('p', { id: 'next-run' });
    const plan = el('p', { id: 'plan' });
    const last = el('p', { id: 'last-transfer', role: 'status' });
    const fields = [];
    const sections = sectionsOf(cls).map(([section, properties]) => {
        const made = properties.map((property) => field(app, cls, draft, property, { control: kControls[property.name] }));
        fields.push(...made);
        return card(t(section), null, ...made.map(({ element }) => element));
    });
    sections[0].append(el('div', { class: 'fact' }, el('h3', {}, t('nextRun')), next, plan,
        el('p', { class: 'help' }, t('nextRunHelp'))));
    const now = card(t('pushNow'), null, el('div', { class: 'fact' }, el('h3', {}, t('lastTransfer')), last),
        methods);
    return {
        element: el('div', { class: 'cards' }, ...sections, now),
        show() {
            fields.forEach((one) => one.show());
            [plan.textContent, next.textContent] = nextRunTexts(cls, draft);
            const time = lastTransfer();
            last.textContent = before !== null && before !== time ? t('arrived', { time }) : time;
        },
    };
}
