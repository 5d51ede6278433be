// The console: pages made from the schema, read again every few seconds while somebody looks.
//
// One App holds the client, a Draft for each instance that was shown, and the page that is open. A page is a view,
// { element, show() }, of its drafts; show() brings it up to date with them. The three pages with a layout of their
// own are modules loaded after the first view.
import { CimError, Client, Draft, ServerGone, SignInNeeded, ruleIn } from './cim.mjs';
import {
    choicesOf, cimTimeText, helpOf, language, languages, numberText, setLanguage, t, timeText, titleOf,
} from './texts.mjs';

const kRefresh = 5_000; // milliseconds between readings
const kRetry = [2_000, 4_000, 8_000, 15_000]; // between attempts when the server is gone
const kNewsLife = 60_000; // how long a change by another client is told
const kSamples = 720; // readings of a counter that are kept: an hour

/** The pages with a layout of their own. Settings: the group that begins with a property. */
const kPages = [
    { id: 'settings', classes: ['QTX_CDRService'],
        groups: { Format: 'report', DNISInfo: 'digits', ClipFileSchedule: 'file', CLIDWithName: 'contents' } },
    { id: 'bins', classes: ['QTX_CDRServicePrefixBin', 'QTX_CDRServiceAccessBin'], module: './bins.mjs' },
    { id: 'push', classes: ['QTX_CDRPushSetting', 'QTX_CDRPushStatistics'], module: './push.mjs' },
    { id: 'statistics', classes: ['QTX_CDRPullStatistics', 'QTX_CDRPushStatistics'], module: './statistics.mjs' },
];

/** Makes an element; "on..." attributes are listeners, true and false set and leave out an attribute. */
export function el(name, attributes = {}, ...content) {
    const element = document.createElement(name);
    for (const [key, value] of Object.entries(attributes)) {
        if (key.startsWith('on')) {
            element.addEventListener(key.slice(2), value);
        } else if (value === true || value === false) {
            element.toggleAttribute(key, value);
        } else if (value != null) {
            element.setAttribute(key, value);
        }
    }
    element.append(...content.filter((one) => one != null));
    return element;
}

const isSecret = (property) => /password/i.test(property.name);
const isNumeric = (property) => /^[su]int|^real/.test(property.type);
/** Whether a property counts something: a number that only the server changes. */
export const isCount = (property) => isNumeric(property) && !property.writable && !property.isKey && !property.isList;

/** A value as a person reads it. */
export function valueText(cls, property, value) {
    if (property.isList) {
        return value || t('empty');
    }
    const word = choicesOf(cls, property)?.find(([one]) => one === value)?.[1];
    if (property.type === 'datetime') {
        return cimTimeText(value) ?? t('never');
    }
    if (word || value == null || value === '') {
        return word ?? t('empty');
    }
    if (isSecret(property)) {
        return '••••';
    }
    if (property.type === 'boolean') {
        return t(value.toUpperCase() === 'TRUE' ? 'yes' : 'no');
    }
    return isCount(property) ? numberText(value) : String(value);
}

// --- controls: { element, get(), set(value) }, the values being texts as in CIM-XML

function checkbox(attributes) {
    const element = el('input', { type: 'checkbox', ...attributes });
    return {
        element,
        get: () => (element.checked ? 'TRUE' : 'FALSE'),
        set: (value) => { element.checked = value.toUpperCase() === 'TRUE'; },
    };
}

/** A select of pairs of value and words; a value that is none of them is added. `choices` may be a function. */
export function chooser(attributes, choices) {
    const element = el('select', attributes);
    const pairs = () => (typeof choices === 'function' ? choices() : choices);
    const fill = (value) => {
        const known = pairs().some(([one]) => one === value) ? pairs() : [[value, value], ...pairs()];
        if (known.flat().join('\n') !== element.dataset.filled) {
            element.dataset.filled = known.flat().join('\n');
            element.replaceChildren(...known.map(([one, word]) => el('option', { value: one }, word || '—')));
        }
    };
    return { element, get: () => element.value, set: (value) => { fill(value); element.value = value; } };
}

/** An input of that type. What the class refuses is left for the server to refuse, which tells why. */
export function input(attributes) {
    const element = el('input', { type: 'text', autocomplete: 'off', spellcheck: 'false', dir: 'auto', ...attributes });
    const set = (value) => {
        if (element.value !== value) { // or the cursor would move
            element.value = value;
        }
    };
    return { element, get: () => element.value, set };
}

function readOnly(cls, property, attributes) {
    const element = el('output', { dir: 'auto', ...attributes });
    return { element, get: () => null, set: (value) => { element.textContent = valueText(cls, property, value); } };
}

function controlFor(cls, draft, property, attributes) {
    if (!property.writable) {
        return readOnly(cls, property, attributes);
    }
    if (property.type === 'boolean') {
        return checkbox({ ...attributes, class: 'switch' });
    }
    if (draft.held(property.name).choices || property.choices) {
        const small = !property.choices && { class: 'short' };
        return chooser({ ...attributes, ...small }, () => draft.held(property.name).choices ?? choicesOf(cls, property));
    }
    const secret = isSecret(property) && { type: 'password', autocomplete: 'new-password' };
    const number = isNumeric(property) && { inputmode: 'numeric', class: 'short' };
    const small = property.maxLength !== null && property.maxLength <= 16 && { class: 'short' };
    return input({ ...attributes, ...small, ...number, ...secret });
}

// --- fields: a property of a draft with its label, help, and what is to be said of it

function limitsText({ least, most, maxLength }) {
    const range = least !== null && most !== null ? t('range', { least, most }) : null;
    return range ?? (maxLength !== null && maxLength < 256 ? t('longest', { count: maxLength }) : null);
}

const kRuleSentence = /\s*Applicable (unless|when) [^.]*\./;

/** The help without the rule of when a property applies, which is told when it does not. */
function helpText(cls, property) {
    const help = helpOf(cls, property).replace(kRuleSentence, '').trim();
    return [help, property.writable && limitsText(property)].filter(Boolean).join(' ');
}

/** Why a property does not apply now: its rule in words, or as its description tells it. */
export function reasonText(app, property) {
    const rule = ruleIn(property.description);
    const [cls, decider] = app.find(rule?.property) ?? [];
    if (!decider) {
        return t('notApplicable', { rule: kRuleSentence.exec(property.description)?.[0].trim() });
    }
    const values = rule.values.map((value) => t('quoted', { value: valueText(cls, decider, value) })).join(t('or'));
    return t(rule.applies ? 'onlyWhile' : 'notWhile', { title: titleOf(cls, decider), values });
}

/** The provider's own text after what is said of its number, if any. */
const refusalText = (text) => (t(/\((\d+)\)$/.exec(text)?.[1] ?? '') ?? '') + text;

function conflictNote(app, draft, name, value) {
    const decide = (action) => () => { action(); app.changed(); };
    return el('div', { class: 'note conflict', role: 'alert' }, el('p', {}, t('conflict', { value })),
        el('button', { type: 'button', onclick: decide(() => draft.discard(name)) }, t('takeTheirs', { value })),
        el('button', { type: 'button', onclick: decide(() => draft.keep(name)) }, t('keepMine')));
}

function notesOf(app, cls, draft, property) {
    const { name } = property;
    const note = (kind, text, role) => el('p', { class: `note ${kind}`, role }, text);
    const shown = (value) => valueText(cls, property, value);
    const conflict = draft.conflict(name);
    const news = draft.news.get(name);
    return [
        !draft.applies(property) && note('reason', reasonText(app, property)),
        draft.refusals.has(name) && note('refusal', refusalText(draft.refusals.get(name)), 'alert'),
        conflict !== null && conflictNote(app, draft, name, shown(conflict)),
        draft.notices.has(name) && note('notice', t('notice', { value: shown(draft.notices.get(name)) }), 'status'),
        news && Date.now() - news.at < kNewsLife && note('news', t('news', { value: shown(news.from) }), 'status'),
    ].filter(Boolean);
}

let fields = 0;

/**
 * One property of a draft as { element, show() }. Options: `label`, told instead of shown (in tables); `control`, made
 * instead of the one that fits the property.
 */
export function field(app, cls, draft, property, { label, control: make = controlFor } = {}) {
    const id = `field-${++fields}`;
    const attributes = { id, 'aria-describedby': `${id}-help ${id}-notes`, 'aria-label': label };
    const control = make(cls, draft, property, attributes);
    const notes = el('div', { id: `${id}-notes`, class: 'notes' });
    const taken = control.element.tagName === 'SELECT' ? 'change' : 'input';
    control.element.addEventListener(taken, () => { draft.set(property.name, control.get()); app.changed(); });
    const element = el('div', { class: 'field', 'data-property': property.name },
        label ? null : el('label', { for: id }, titleOf(cls, property)),
        el('div', { class: 'control' }, control.element, property.units && el('span', { class: 'units' }, property.units)),
        el('p', { id: `${id}-help`, class: 'help', hidden: Boolean(label) }, helpText(cls, property)),
        notes);
    let told = '';
    return {
        element,
        show() {
            control.set(draft.value(property.name));
            control.element.toggleAttribute('disabled', !draft.applies(property));
            control.element.setAttribute('aria-invalid', draft.refusals.has(property.name));
            element.classList.toggle('changed', draft.isChanged(property.name));
            element.classList.toggle('off', !draft.applies(property));
            const made = notesOf(app, cls, draft, property);
            const text = made.map((one) => one.textContent).join('\n');
            if (text !== told) { // an alert that is put there again would be read out again
                told = text;
                notes.replaceChildren(...made);
            }
        },
    };
}

let cards = 0;

/** A card with a title, help and content. */
export function card(title, help, ...content) {
    const id = `card-${++cards}`;
    return el('section', { class: 'card', 'aria-labelledby': id }, el('h2', { id }, title),
        help ? el('p', { class: 'help' }, help) : null, ...content);
}

/**
 * A button for each method without parameters. `begin` is called before a method is, `outcome` makes a text of what it
 * returned.
 */
export function methodButtons(app, cls, draft, { begin = () => {}, outcome = (value) => t('returned', { value }) } = {}) {
    return el('div', { class: 'methods' }, ...cls.methods.filter(({ parameters }) => parameters === 0).map((method) => {
        const said = el('p', { class: 'note', role: 'status' });
        const run = async () => {
            const { confirmed } = await import('./dialogs.mjs');
            if (await confirmed(titleOf(cls, method), helpOf(cls, method))) {
                said.textContent = t('running');
                begin();
                said.textContent = await app.invoke(draft, method.name, outcome);
            }
        };
        return el('div', {}, el('button', { type: 'button', 'data-method': method.name, onclick: run },
            titleOf(cls, method)), said);
    }));
}

// --- the generic view: a card for each instance, or for each group of its properties

/** Splits properties into [group, properties], each beginning where `groups` says, in the order of the class. */
export function grouped(properties, groups = {}) {
    const result = [[null, []]];
    for (const property of properties) {
        if (groups[property.name]) {
            result.push([groups[property.name], []]);
        }
        result.at(-1)[1].push(property);
    }
    return result.filter(([, members]) => members.length > 0);
}

function instanceCards(app, page, cls, draft) {
    const properties = page.groups ? cls.properties.filter(({ isKey }) => !isKey) : cls.properties;
    const fields = [];
    const cards = grouped(properties, page.groups).map(([group, members]) => {
        const made = members.map((property) => field(app, cls, draft, property));
        fields.push(...made);
        return card(group ? t(group) : draft.instance.title, null, ...made.map(({ element }) => element));
    });
    cards.at(-1)?.append(methodButtons(app, cls, draft));
    return { cards, fields };
}

function genericView(app, page) {
    const made = page.classes.flatMap((cls) =>
        app.draftsOf(cls).map((draft) => instanceCards(app, page, cls, draft)));
    const cards = made.flatMap((one) => one.cards);
    return {
        element: el('div', { class: 'cards' }, ...cards, cards.length ? null : el('p', {}, t('noInstances'))),
        show: () => made.forEach((one) => one.fields.forEach((each) => each.show())),
    };
}

// --- the application

const byId = (id) => document.getElementById(id);

class App {
    #client = new Client();
    #classes = [];
    #pages = [];
    #drafts = new Map(); // by path
    #lists = new Map(); // by class, the drafts of its instances
    #history = new Map(); // by path and property, readings { at, value }
    #page = null;
    #view = null;
    #turn = 0; // of readings; one that another turn has overtaken is dropped
    #timer = 0;
    #failures = 0;
    #readAt = null;
    #asking = null;

    start() {
        byId('save').addEventListener('click', () => this.#save());
        byId('discard').addEventListener('click', () => this.#discard());
        byId('sign-out').addEventListener('click', () => this.#signOut());
        byId('language').addEventListener('change', ({ target }) => this.#speak(target.value));
        byId('skip').addEventListener('click', (event) => { event.preventDefault(); byId('page').focus(); });
        byId('view').addEventListener('keydown', ({ key, target }) => {
            if (key === 'Enter' && target.matches('input') && this.#unsaved() > 0) {
                this.#save();
            }
        });
        addEventListener('hashchange', () => this.#open());
        addEventListener('beforeunload', (event) => this.#unsaved() > 0 && event.preventDefault());
        document.addEventListener('visibilitychange', () => this.refresh());
        this.#speak(language());
    }

    /** The drafts of the instances of a class, in the server's order. */
    draftsOf(cls) {
        return this.#lists.get(cls.name) ?? [];
    }

    /** A property of that name with its class, [class, property], if any class has one. */
    find(name) {
        const cls = this.#classes.find(({ properties }) => properties.some((one) => one.name === name));
        return cls && [cls, cls.properties.find((one) => one.name === name)];
    }

    /** The readings of a counter while the page was open. */
    historyOf(draft, property) {
        return this.#history.get(`${draft.instance.path} ${property.name}`) ?? [];
    }

    /** To be called when a draft was changed. */
    changed() {
        this.#view?.show();
        const count = this.#unsaved();
        byId('savebar').hidden = count === 0;
        if (count === 0) {
            this.#tellOutcome('');
        }
        byId('unsaved').textContent = t(count === 1 ? 'changedOne' : 'changedMany', { count });
    }

    /** Calls a method and reads the page again; returns what is to be said of it. */
    async invoke(draft, method, outcome) {
        try {
            const value = await this.#withUser(() => this.#client.invoke(draft.instance, method));
            await this.refresh();
            return outcome(value);
        } catch (error) {
            if (error instanceof ServerGone) {
                this.#fail(error);
            }
            return t('failed', { text: error.message });
        }
    }

    /** Reads the page, if somebody looks, and again after a while. */
    async refresh() {
        const turn = ++this.#turn;
        clearTimeout(this.#timer);
        if (document.hidden) {
            return this.#tellState(t('paused'));
        }
        try {
            const read = await this.#withUser(() => this.#read());
            if (turn === this.#turn) {
                this.#take(read);
                this.#timer = setTimeout(() => this.refresh(), kRefresh);
            }
        } catch (error) {
            if (turn === this.#turn) {
                this.#fail(error);
            }
        }
    }

    /** The classes first; then the page's instances, and from the second time on those with counters. */
    async #read() {
        if (this.#classes.length === 0) {
            this.#classes = (await this.#client.classes()).filter(({ hasInstances }) => hasInstances);
            this.#makePages();
        }
        const counted = this.#readAt ? this.#classes.filter((cls) => cls.properties.some(isCount)) : [];
        const wanted = [...new Set([...(this.#page?.classes ?? []), ...counted])];
        return Promise.all(wanted.map(async (cls) => [cls, await this.#instancesOf(cls)]));
    }

    /** What cannot be read of classes that are not on the page does not concern it. */
    async #instancesOf(cls) {
        try {
            return await this.#client.instances(cls.name);
        } catch (error) {
            if (error instanceof CimError && !this.#page?.classes.includes(cls)) {
                return [];
            }
            throw error;
        }
    }

    #take(read) {
        this.#readAt = new Date();
        if (this.#failures > 0) {
            this.#say(t('back'));
        }
        this.#failures = 0;
        const shown = () => this.#page?.classes.flatMap((cls) => this.draftsOf(cls)).map(({ instance }) => instance.path);
        const before = String(shown());
        for (const [cls, instances] of read) {
            this.#lists.set(cls.name, instances.map((instance) => this.#observe(cls, instance)));
        }
        byId('gone').hidden = true;
        byId('problem').hidden = true;
        document.body.classList.remove('lost');
        byId('sign-out').hidden = this.#client.user === null;
        byId('sign-out').textContent = t('signOut', { user: this.#client.user });
        this.#tellState(t('live', { time: timeText(this.#readAt, true) }));
        if (!this.#view || before !== String(shown())) {
            this.#build();
        }
        this.changed();
    }

    #observe(cls, instance) {
        const draft = this.#drafts.get(instance.path) ?? new Draft(cls, instance);
        draft.observe(instance);
        this.#drafts.set(instance.path, draft);
        for (const { name } of cls.properties.filter((one) => isCount(one) && draft.applies(one))) {
            const key = `${instance.path} ${name}`;
            const samples = [...(this.#history.get(key) ?? []), { at: Date.now(), value: Number(draft.stored(name)) }];
            this.#history.set(key, samples.slice(-kSamples));
        }
        return draft;
    }

    // --- pages

    #makePages() {
        const known = (names) => names.map((name) => this.#classes.find((cls) => cls.name === name)).filter(Boolean);
        const own = kPages.filter(({ classes }) => known([classes[0]]).length > 0)
            .map((page) => ({ ...page, title: () => t(page.id), classes: known(page.classes) }));
        const plain = this.#classes.map((cls) => ({ id: `class/${cls.name}`, title: () => titleOf(cls), classes: [cls],
            help: () => helpOf(cls), isOther: !kPages.some(({ classes }) => classes.includes(cls.name)) }));
        this.#pages = [...own, ...plain];
        this.#choosePage();
    }

    #choosePage() {
        const wanted = location.hash.slice(1);
        this.#page = this.#pages.find(({ id }) => encodeURI(id) === wanted) ?? this.#pages[0];
    }

    async #open() {
        this.#choosePage();
        await this.#showAnew();
        scrollTo(0, 0);
        byId('page').focus({ preventScroll: true });
    }

    /** What is known of the page at once, then what it is now. */
    async #showAnew() {
        this.#view = null;
        byId('view').replaceChildren();
        this.#showNav();
        if (this.#page?.classes.every((cls) => this.#lists.has(cls.name))) {
            await this.#build();
        }
        await this.refresh();
    }

    async #build() {
        const page = this.#page;
        this.#showNav();
        if (!page) { // a server without classes
            return;
        }
        const hasLayout = page.module && this.draftsOf(page.classes[0]).length > 0;
        const { view } = hasLayout ? await import(page.module).catch(() => ({})) : { view: genericView };
        if (!view) {
            return this.#fail(new ServerGone());
        }
        if (page !== this.#page) { // another was opened meanwhile
            return;
        }
        this.#view = view(this, page);
        const links = page.id.startsWith('class/') ? [] : page.classes.map((cls) =>
            el('a', { href: encodeURI(`#class/${cls.name}`) }, t('plain', { class: titleOf(cls) })));
        byId('view').replaceChildren(el('h1', {}, page.title()), page.help ? el('p', { class: 'lead' }, page.help()) : '',
            this.#view.element, el('p', { class: 'links' }, ...links));
        this.#view.show();
        (globalThis.requestIdleCallback ?? setTimeout)(preload);
    }

    #showNav() {
        const link = (page) => el('a', {
            href: `#${encodeURI(page.id)}`, 'aria-current': page === this.#page ? 'page' : null }, page.title());
        const own = this.#pages.filter(({ id }) => !id.startsWith('class/'));
        const others = this.#pages.filter(({ isOther }) => isOther);
        byId('nav').replaceChildren(...own.map(link),
            ...(others.length ? [el('p', {}, t('more')), ...others.map(link)] : []));
        document.title = this.#page ? `${this.#page.title()} – ${t('title')}` : t('title');
    }

    /** Makes all texts in that language. */
    #speak(code) {
        setLanguage(code);
        document.documentElement.lang = code;
        for (const id of ['title', 'save', 'discard', 'skip']) {
            byId(id).textContent = t(id);
        }
        byId('host').textContent = location.host;
        byId('nav').setAttribute('aria-label', t('nav'));
        byId('language').setAttribute('aria-label', t('chooseLanguage'));
        byId('language').replaceChildren(...languages.map(([one, name]) =>
            el('option', { value: one, selected: one === code }, name)));
        this.#tellState(t('connecting'));
        this.#showAnew();
    }

    // --- changes

    #unsaved() {
        return [...this.#drafts.values()].reduce((count, draft) => count + draft.changes().length, 0);
    }

    #discard() {
        this.#drafts.forEach((draft) => draft.discardAll());
        this.changed();
    }

    async #save() {
        ++this.#turn; // a reading under way may be older than what is saved
        clearTimeout(this.#timer);
        byId('save').disabled = true;
        this.#tellOutcome('');
        try {
            for (const draft of [...this.#drafts.values()].filter((one) => one.changes().length > 0)) {
                await this.#withUser(() => this.#saveOne(draft));
            }
            this.#tellSaved();
            this.#timer = setTimeout(() => this.refresh(), kRefresh);
        } catch (error) {
            this.#fail(error);
        }
        byId('save').disabled = false;
    }

    /** Reads the instance before, so that nothing another client has set is overwritten unseen. */
    async #saveOne(draft) {
        draft.observe(await this.#client.again(draft.instance));
        const sent = draft.changes();
        if (draft.hasConflict() || sent.length === 0) {
            return;
        }
        try {
            await this.#client.modify(draft.instance, sent);
        } catch (error) {
            if (!(error instanceof CimError)) {
                throw error;
            }
            return draft.refuse(sent, await this.#client.again(draft.instance), error);
        }
        draft.settle(sent, await this.#client.again(draft.instance));
    }

    #tellSaved() {
        const drafts = [...this.#drafts.values()];
        const refusal = drafts.map((draft) => draft.refusals.get('')).find(Boolean);
        this.changed();
        if (refusal) {
            this.#tellOutcome(t('refusedAll', { text: refusalText(refusal) }));
        } else if (drafts.some((draft) => draft.hasConflict())) {
            this.#tellOutcome(t('decide'));
        } else if (this.#unsaved() === 0) {
            this.#say(t('saved'));
        }
        document.querySelector('[aria-invalid=true], .conflict button')?.focus();
    }

    // --- the server and its users

    /** Does what needs the server; asks for a user as often as the server does. */
    async #withUser(action) {
        for (;;) {
            try {
                return await action();
            } catch (error) {
                if (!(error instanceof SignInNeeded)) {
                    throw error;
                }
                this.#asking ??= this.#askForUser().finally(() => { this.#asking = null; });
                await this.#asking;
            }
        }
    }

    async #askForUser() {
        const { askForUser } = await import('./dialogs.mjs');
        const { user, password } = await askForUser(this.#client.user);
        this.#client.signIn(user, password);
    }

    #signOut() {
        this.#client.signOut();
        for (const map of [this.#drafts, this.#lists, this.#history]) {
            map.clear();
        }
        this.#classes = [];
        this.#view = null;
        this.#readAt = null;
        byId('sign-out').hidden = true;
        byId('view').replaceChildren();
        byId('nav').replaceChildren();
        this.#tellState('');
        this.changed();
        this.refresh();
    }

    /** For a moment, and to screen readers. */
    #say(text) {
        byId('said').replaceChildren(el('span', {}, text));
    }

    #tellState(text) {
        byId('state').textContent = text;
    }

    /** Of saving. */
    #tellOutcome(text) {
        byId('outcome').textContent = text;
    }

    #fail(error) {
        ++this.#turn;
        clearTimeout(this.#timer);
        if (!(error instanceof ServerGone)) {
            byId('problem').textContent = t('problem', { text: error.message });
            byId('problem').hidden = false;
            this.#timer = setTimeout(() => this.refresh(), kRefresh);
            return;
        }
        if (byId('gone').hidden) { // an alert that is put there again would be read out again
            const time = timeText(this.#readAt ?? new Date(), true);
            byId('gone').replaceChildren(el('p', {}, t('gone', { time })),
                el('button', { onclick: () => this.refresh() }, t('tryNow')));
            byId('gone').hidden = false;
        }
        document.body.classList.add('lost');
        this.#tellState(t('lost'));
        this.#timer = setTimeout(() => this.#probe(), kRetry[Math.min(this.#failures++, kRetry.length - 1)]);
    }

    /** Asks only whether the server is back. */
    async #probe() {
        const turn = this.#turn;
        if (document.hidden || await this.#client.isThere()) {
            return this.refresh();
        }
        if (turn === this.#turn) {
            this.#fail(new ServerGone());
        }
    }
}

/** Once the first view is there, so that the others open also when the server is gone. */
function preload() {
    ['./dialogs.mjs', ...kPages.map(({ module }) => module).filter(Boolean)]
        .forEach((module) => import(module).catch(() => null)); // tried again when it is needed
}

if (globalThis.document) { // not in the tests of its functions
    new App().start();
}
