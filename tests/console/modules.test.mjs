// The console's modules without a browser: `node --test tests/console`.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';

const { Client, Draft, basic, escaped, modifiedInstance, requestText, ruleIn, words } = await import('../../console/cim.mjs');
const { grouped, isCount, valueText } = await import('../../console/console.mjs');
const { nextRun, padded } = await import('../../console/push.mjs');
const { lineOf } = await import('../../console/statistics.mjs');
const { cimTimeText, languages, setLanguage, t } = await import('../../console/texts.mjs');

const file = (name) => readFileSync(new URL(`../../${name}`, import.meta.url), 'utf8');

test('texts go into XML and headers whole', () => {
    assert.equal(escaped('<a b="&">\r\n\t'), '&lt;a b=&quot;&amp;&quot;&gt;&#13;\n\t');
    assert.equal(Buffer.from(basic('ä', 'p:ß').slice(6), 'base64').toString(), 'ä:p:ß');
    const request = requestText('root/cimv2', 'M"', { nameXml: '<INSTANCENAME/>' }, '');
    assert.match(request, /<METHODCALL NAME="M&quot;"><LOCALINSTANCEPATH><LOCALNAMESPACEPATH><NAMESPACE NAME="root"\/><NAMESPACE/);
    const instance = { className: 'C', nameXml: '<INSTANCENAME CLASSNAME="C"/>' };
    assert.match(modifiedInstance(instance, [{ name: 'P', type: 'string', value: '<' }]),
        /<INSTANCENAME CLASSNAME="C"\/><INSTANCE CLASSNAME="C"><PROPERTY NAME="P" TYPE="string"><VALUE>&lt;<\/VALUE>/);
});

test('a server that answers is there, whatever it says', async () => {
    const answers = [[async () => ({ ok: false, status: 503 }), true], [async () => { throw new TypeError(); }, false]];
    for (const [answer, there] of answers) {
        globalThis.fetch = answer;
        assert.equal(await new Client().isThere(), there);
    }
});

test('names become words', () => {
    const cases = {
        DigitsLimit: 'Digits limit', ClipFileSize_100K: 'Clip file size', CDRDiskSpaceLimit_MB: 'CDR disk space limit',
        DNISInfo: 'DNIS info', IPAddress: 'IP address', CLIDWithCallType: 'CLID with call type', a: 'A',
    };
    Object.entries(cases).forEach(([name, text]) => assert.equal(words(name), text));
});

const property = (name, more = {}) => ({ name, type: 'string', writable: true, description: '', ...more });
const kClass = { properties: [property('A'), property('B'), property('C', { description: 'Applicable when A is 1 or 2.' })] };
const held = (value, applicable = true) => ({ value, applicable, choices: null });
const instance = (a, b, c = held('', false)) =>
    ({ properties: new Map([['A', held(a)], ['B', held(b)], ['C', c]]) });

test('arrays are shown as they are', () => {
    for (const type of ['uint16', 'boolean', 'datetime']) {
        const list = property('A', { type, writable: false, isList: true });
        assert.ok(!isCount(list));
        assert.equal(valueText(kClass, list, new Draft(kClass, instance(['1', '2'])).stored('A')), '1, 2', type);
    }
});

test('a draft sends only what was changed, in the order of the class, and what applies', () => {
    const draft = new Draft(kClass, instance('0', null));
    draft.set('B', 'b');
    draft.set('C', 'c');
    assert.deepEqual(draft.changes().map(({ name }) => name), ['B']); // C needs A
    draft.set('A', '2');
    assert.deepEqual(draft.changes().map(({ name }) => name), ['A', 'B', 'C']);
    draft.set('A', '0');
    draft.set('B', ''); // NULL is the empty text
    assert.deepEqual(draft.changes(), []);
    assert.deepEqual(ruleIn('Day. Applicable unless T of the push setting is 3 or not set.'),
        { property: 'T', values: ['3'], applies: false });
});

test('a draft tells what another client changed, and conflicts with it', () => {
    const draft = new Draft(kClass, instance('0', 'x'));
    draft.set('B', 'mine');
    draft.observe(instance('7', 'theirs'), 5);
    assert.deepEqual(draft.news.get('A'), { from: '0', at: 5 });
    assert.equal(draft.conflict('B'), 'theirs');
    draft.set('B', 'mine still'); // typing on does not settle it
    assert.equal(draft.conflict('B'), 'theirs');
    draft.keep('B');
    assert.equal(draft.hasConflict(), false);
    draft.observe(instance('7', 'mine still'));
    assert.deepEqual(draft.changes(), []);
});

test('a refusal is told at what the server did not take, an altered value at what it altered', () => {
    const refused = (error) => {
        const draft = new Draft(kClass, instance('0', 'x'));
        draft.set('A', '1');
        draft.set('B', 'y');
        draft.refuse(draft.changes(), instance('1', 'x'), error);
        return [[...draft.refusals.keys()], draft.changes().map(({ name }) => name)];
    };
    assert.deepEqual(refused({ code: 1, message: '301' }), [['B'], ['B']]); // A was applied before
    assert.deepEqual(refused({ code: 2, message: 'denied' }), [[''], ['B']]);
    const draft = new Draft(kClass, instance('0', 'x'));
    draft.set('A', '300');
    draft.settle(draft.changes(), instance('44', 'x'));
    assert.equal(draft.notices.get('A'), '44');
});

test('the next run is the one that cron makes', () => {
    const now = new Date(2026, 0, 31, 8, 30); // a Saturday
    const cases = [
        [{ type: '0', time: '8:31' }, '2026-01-31 8:31'],
        [{ type: '0', time: '8:30' }, '2026-02-01 8:30'],
        [{ type: '0', time: '' }, '2026-02-01 0:0'],
        [{ type: '1', time: '8:30', weekday: '6' }, '2026-02-07 8:30'],
        [{ type: '1', time: '23:59', weekday: '0' }, '2026-02-01 23:59'],
        [{ type: '2', time: '8:30', day: '31' }, '2026-03-31 8:30'],
        [{ type: '2', time: '8:30', day: '' }, null],
        [{ type: '4', time: '8:30' }, null],
    ];
    const shown = (run) => run && `${run.getFullYear()}-${String(run.getMonth() + 1).padStart(2, '0')}-` +
        `${String(run.getDate()).padStart(2, '0')} ${run.getHours()}:${run.getMinutes()}`;
    cases.forEach(([plan, expected]) => assert.equal(shown(nextRun(plan, now)), expected, JSON.stringify(plan)));
    assert.deepEqual(['8:5', '23:59', '', 'x:1'].map(padded), ['08:05', '23:59', '', '']);
});

test('a chart fits its area, also with one value only', () => {
    assert.deepEqual(lineOf([{ at: 0, value: 0 }, { at: 5, value: 4 }, { at: 10, value: 2 }], 100, 10),
        { top: 4, points: '0.0,10.0 50.0,0.0 100.0,5.0' });
    assert.deepEqual(lineOf([{ at: 7, value: 0 }], 100, 10), { top: 1, points: '0.0,10.0' });
});

test('properties that the layout does not name join the group before them', () => {
    const names = (groups) => groups.map(([group, members]) => [group, members.map(({ name }) => name).join()]);
    const all = ['A', 'B', 'C', 'D'].map((name) => property(name));
    assert.deepEqual(names(grouped(all, { A: 'one', C: 'two' })), [['one', 'A,B'], ['two', 'C,D']]);
    assert.ok(isCount(property('N', { type: 'uint32', writable: false })) && !isCount(property('N', { type: 'uint32' })));
});

test('every language has every text, with the same places', () => {
    const source = file('console/texts.mjs');
    const places = (text) => [...text.matchAll(/\{\w+\}/g)].map(String).sort();
    const names = [...source.matchAll(/^ {8}'?(\w+)'?: '/gm)].map(([, name]) => name);
    assert.ok(names.length > 60 * languages.length);
    for (const name of new Set(names.filter((one) => one !== 'schema'))) {
        const [english, ...others] = languages.map(([code]) => { setLanguage(code); return t(name); });
        others.forEach((text) => assert.deepEqual(places(text), places(english), name));
        assert.equal(names.filter((one) => one === name).length, languages.length, name);
    }
    const mof = file('schema/QTX_CDR.mof');
    [...source.matchAll(/^ {12,16}(\w+): [[{]/gm)].forEach(([, name]) =>
        assert.match(mof, new RegExp(`\\b${name}\\b`), `${name} is not in the schema`));
    setLanguage('en');
    assert.match(cimTimeText('20261122003000.000000+060'), /November 2[12], 2026/);
    assert.equal(cimTimeText('00000000000000.000000:000'), null);
});

test('texts reach a contrast of 4.5 in light and dark, edges of controls 3', () => {
    const luminance = (hex) => [1, 3, 5].map((i) => parseInt(hex.slice(i, i + 2), 16) / 255)
        .map((c) => (c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4))
        .reduce((sum, c, i) => sum + c * [0.2126, 0.7152, 0.0722][i], 0);
    const schemes = [...file('console/console.css').matchAll(/:root \{([^}]*)\}/g)].map(([, body]) =>
        Object.fromEntries([...body.matchAll(/--([\w-]+): (#\w{6})/g)].map(([, name, value]) => [name, value])));
    const pairs = [['text', 'ground'], ['text', 'surface'], ['text', 'line'], ['muted', 'ground'], ['muted', 'surface'], ['accent', 'surface'],
        ['accent', 'ground'], ['accent', 'tint'], ['on-accent', 'accent'], ['bad', 'surface'], ['bad', 'bad-tint'], ['warn', 'warn-tint'],
        ['warn', 'surface'], ['edge', 'surface', 3]];
    assert.equal(schemes.length, 2);
    for (const colours of schemes) {
        for (const [fore, back, least = 4.5] of pairs) {
            const [a, b] = [luminance(colours[fore]), luminance(colours[back])].sort((x, y) => y - x);
            assert.ok((a + 0.05) / (b + 0.05) >= least, `${fore} on ${back}: ${(a + 0.05) / (b + 0.05)}`);
        }
    }
});
