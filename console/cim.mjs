// CIM-XML over fetch, and what the console knows of classes and instances. Needs no document but to read answers.

/** The server refused an operation; `code` is the CIM status code. */
export class CimError extends Error {
    constructor(code, text) {
        super(text);
        this.code = code;
    }
}

/** The server wants a user, or not this one. */
export class SignInNeeded extends Error {}

/** The server cannot be reached, or serves nobody at present. */
export class ServerGone extends Error {}

const kLimit = 30_000; // milliseconds for an answer
const kMethodLimit = 600_000; // a method may run a program

/** The text as it stands in XML, in content and in attributes. */
export function escaped(text) {
    const entities = { '&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;', '\r': '&#13;' };
    return String(text).replace(/[&<>"\r]/g, (character) => entities[character]);
}

/** "ClipFileSize_100K" as "Clip file size": the words of a name; a unit at its end is left to the qualifier Units. */
export function words(name) {
    const parts = name.replace(/_\w+$/, '').match(/[A-Z]+(?![a-z])|[A-Z]?[a-z]+|\d+/g) ?? [name];
    const lowered = parts.map((part) => (/^[A-Z]{2,}$/.test(part) ? part : part.toLowerCase())).join(' ');
    return lowered[0].toUpperCase() + lowered.slice(1);
}

const children = (element, name) => [...(element?.children ?? [])].filter((child) => child.tagName === name);
const child = (element, name) => children(element, name)[0];
const isTrue = (text) => text?.toUpperCase() === 'TRUE';

/** The value below an element: a text, a list of texts, or null. */
function valueOf(element) {
    const list = child(element, 'VALUE.ARRAY');
    if (list) {
        return children(list, 'VALUE').map((value) => value.textContent);
    }
    return (child(element, 'VALUE') ?? child(element, 'VALUE.REFERENCE'))?.textContent ?? null;
}

/** Qualifiers by their names in lower case. */
function qualifiersOf(element) {
    return new Map(
        children(element, 'QUALIFIER').map((one) => [one.getAttribute('NAME').toLowerCase(), valueOf(one)]));
}

/** Pairs of a value and its words, from ValueMap and Values. */
function choicesOf(qualifiers) {
    const map = qualifiers.get('valuemap');
    return map ? map.map((value, i) => [value, qualifiers.get('values')?.[i] ?? value]) : null;
}

function numberOf(text) {
    return text == null ? null : Number(text);
}

function propertyOf(element) {
    const qualifiers = qualifiersOf(element);
    const name = element.getAttribute('NAME');
    const single = element.tagName === 'PROPERTY';
    return {
        name,
        title: qualifiers.get('displayname') ?? words(name),
        type: element.getAttribute('TYPE') ?? 'reference',
        isList: element.tagName === 'PROPERTY.ARRAY',
        isKey: isTrue(qualifiers.get('key')),
        writable: single && isTrue(qualifiers.get('write')) && !isTrue(qualifiers.get('key')),
        description: qualifiers.get('description') ?? '',
        units: qualifiers.get('units') ?? '',
        least: numberOf(qualifiers.get('minvalue')),
        most: numberOf(qualifiers.get('maxvalue')),
        maxLength: numberOf(qualifiers.get('maxlen')),
        choices: choicesOf(qualifiers),
    };
}

function methodOf(element) {
    const name = element.getAttribute('NAME');
    const parameters = [...element.children].filter((one) => one.tagName.startsWith('PARAMETER')).length;
    return { name, title: words(name), description: qualifiersOf(element).get('description') ?? '', parameters };
}

const isProperty = (element) => element.tagName === 'PROPERTY' || element.tagName.startsWith('PROPERTY.');

function classOf(element) {
    const qualifiers = qualifiersOf(element);
    const name = element.getAttribute('NAME');
    return {
        name,
        title: qualifiers.get('displayname') ?? words(name.replace(/^[A-Za-z0-9]+_/, '')),
        description: qualifiers.get('description') ?? '',
        hasInstances: !['abstract', 'association', 'indication'].some((one) => isTrue(qualifiers.get(one))),
        properties: [...element.children].filter(isProperty).map(propertyOf),
        methods: children(element, 'METHOD').map(methodOf),
    };
}

function heldProperty(element) {
    const qualifiers = qualifiersOf(element);
    const applicable = qualifiers.get('applicable');
    return {
        value: valueOf(element),
        applicable: applicable == null || isTrue(applicable),
        choices: qualifiers.get('validvaluemap')?.map((value) => [value, value]) ?? null,
    };
}

function keysOf(nameElement) {
    return children(nameElement, 'KEYBINDING').map((binding) => [binding.getAttribute('NAME'), binding.textContent]);
}

/** An instance: `path` is unique and readable, `nameXml` names it in requests. */
function instanceOf(nameElement, element) {
    const quoted = (text) => `"${text.replace(/["\\]/g, '\\$&')}"`;
    const keys = keysOf(nameElement);
    const className = nameElement.getAttribute('CLASSNAME');
    return {
        className,
        title: keys.map(([, value]) => value).join(' / '),
        path: className + (keys.length ? '.' + keys.map(([name, value]) => `${name}=${quoted(value)}`).join(',') : ''),
        nameXml: new XMLSerializer().serializeToString(nameElement),
        properties: propertiesOf(element),
    };
}

function propertiesOf(element) {
    return new Map(
        [...element.children].filter(isProperty).map((one) => [one.getAttribute('NAME'), heldProperty(one)]));
}

/** The request for an intrinsic operation (`target` null) or a method of the instance `target`. */
export function requestText(nameSpace, name, target, content) {
    const spaces = nameSpace.split('/').map((part) => `<NAMESPACE NAME="${escaped(part)}"/>`).join('');
    const local = `<LOCALNAMESPACEPATH>${spaces}</LOCALNAMESPACEPATH>`;
    const call = target
        ? `<METHODCALL NAME="${escaped(name)}"><LOCALINSTANCEPATH>${local}${target.nameXml}</LOCALINSTANCEPATH></METHODCALL>`
        : `<IMETHODCALL NAME="${name}">${local}${content}</IMETHODCALL>`;
    return '<?xml version="1.0" encoding="utf-8" ?><CIM CIMVERSION="2.0" DTDVERSION="2.0">' +
        `<MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLEREQ>${call}</SIMPLEREQ></MESSAGE></CIM>`;
}

const parameter = (name, content) => `<IPARAMVALUE NAME="${name}">${content}</IPARAMVALUE>`;
const flag = (name, value) => parameter(name, `<VALUE>${value ? 'TRUE' : 'FALSE'}</VALUE>`);

/** The ModifyInstance parameter with these properties, and only these. */
export function modifiedInstance(instance, changes) {
    const properties = changes.map(({ name, type, value }) =>
        `<PROPERTY NAME="${escaped(name)}" TYPE="${type}"><VALUE>${escaped(value)}</VALUE></PROPERTY>`);
    const body = `<INSTANCE CLASSNAME="${escaped(instance.className)}">${properties.join('')}</INSTANCE>`;
    return parameter('ModifiedInstance', `<VALUE.NAMEDINSTANCE>${instance.nameXml}${body}</VALUE.NAMEDINSTANCE>`);
}

/** The Authorization field of a user. */
export function basic(user, password) {
    const bytes = new TextEncoder().encode(`${user}:${password}`);
    return `Basic ${btoa(String.fromCharCode(...bytes))}`;
}

// The one place where a text becomes a document; the Content-Security-Policy allows this policy alone.
const trusted = globalThis.trustedTypes?.createPolicy('cim-xml', { createHTML: (text) => text });

function answerIn(text) {
    const document = new DOMParser().parseFromString(trusted?.createHTML(text) ?? text, 'application/xml');
    const response = document.querySelector('IMETHODRESPONSE, METHODRESPONSE');
    if (!response) {
        throw new Error('the answer is not CIM-XML');
    }
    const error = child(response, 'ERROR');
    if (error) {
        throw new CimError(Number(error.getAttribute('CODE')), error.getAttribute('DESCRIPTION') ?? '');
    }
    return response;
}

/** Speaks to the server that the page came from. Keeps a user's password in memory only. */
export class Client {
    #authorization = null;
    #nameSpace;
    user = null;

    constructor(nameSpace = 'root/cimv2') {
        this.#nameSpace = nameSpace;
    }

    signIn(user, password) {
        this.user = user;
        this.#authorization = basic(user, password);
    }

    signOut() {
        this.user = null;
        this.#authorization = null;
    }

    /** Whether the server answers at all, whatever it says; needs no user. */
    async isThere() {
        try {
            await fetch('/health', { cache: 'no-store', signal: AbortSignal.timeout(kLimit) });
            return true;
        } catch {
            return false;
        }
    }

    /** All classes of the namespace, as GetClass tells each. */
    async classes() {
        const response = await this.#call('EnumerateClasses', null,
            flag('DeepInheritance', true) + flag('LocalOnly', false) + flag('IncludeQualifiers', true));
        return children(child(response, 'IRETURNVALUE'), 'CLASS').map(classOf);
    }

    async instances(className) {
        const response = await this.#call('EnumerateInstances', null,
            parameter('ClassName', `<CLASSNAME NAME="${escaped(className)}"/>`) + flag('LocalOnly', false));
        return children(child(response, 'IRETURNVALUE'), 'VALUE.NAMEDINSTANCE')
            .map((named) => instanceOf(child(named, 'INSTANCENAME'), child(named, 'INSTANCE')));
    }

    /** The same instance as it is now. */
    async again(instance) {
        const response = await this.#call('GetInstance', null,
            parameter('InstanceName', instance.nameXml) + flag('LocalOnly', false));
        return { ...instance, properties: propertiesOf(child(child(response, 'IRETURNVALUE'), 'INSTANCE')) };
    }

    /** Sends the changes ({name, type, value}) in one ModifyInstance. */
    async modify(instance, changes) {
        await this.#call('ModifyInstance', null, modifiedInstance(instance, changes));
    }

    /** Calls a method without parameters; returns what it returns, as a text. */
    async invoke(instance, method) {
        return valueOf(child(await this.#call(method, instance, ''), 'RETURNVALUE'));
    }

    async #call(name, target, content) {
        const object = this.#nameSpace + (target ? `:${target.path}` : '');
        const headers = {
            'Content-Type': 'application/xml; charset=utf-8',
            CIMOperation: 'MethodCall',
            CIMMethod: encodeURIComponent(name),
            CIMObject: encodeURIComponent(object),
            ...(this.#authorization && { Authorization: this.#authorization }),
        };
        const limit = target ? kMethodLimit : kLimit;
        return answerIn(await send(requestText(this.#nameSpace, name, target, content), headers, limit));
    }
}

/** Without credentials of the browser's own a 401 comes here instead of making the browser ask for a password. */
async function send(body, headers, limit) {
    let answer;
    let text;
    try {
        answer = await fetch('/cimom', {
            method: 'POST', headers, body, credentials: 'omit', cache: 'no-store', signal: AbortSignal.timeout(limit),
        });
        text = await answer.text();
    } catch (error) {
        throw new ServerGone(error.message);
    }
    if (answer.status === 401) {
        throw new SignInNeeded();
    }
    if (answer.status === 503) {
        throw new ServerGone(text);
    }
    if (!answer.ok) {
        throw new Error(`${answer.status}: ${answer.headers.get('CIMError') ?? ''} ${text}`.trim());
    }
    return text;
}

/** The rule in a description such as "Applicable unless TransferType is 3 or 4."; null when it has none. */
export function ruleIn(description) {
    const found = /Applicable (unless|when) (\w+)(?: of the [a-z ]+)? is (\d+(?: or \d+)*)/.exec(description);
    return found && { property: found[2], values: found[3].split(' or '), applies: found[1] === 'when' };
}

/** An instance as the server last told it, with what a person has changed of it and not saved yet. */
export class Draft {
    refusals = new Map(); // by property, why the server refused its change; '' for all of them
    notices = new Map(); // by property, what the server made of the value that was saved
    news = new Map(); // by property, what another client changed: { from, at }
    #changes = new Map(); // by property: { value, base }, base being the server's value that it replaces

    constructor(cls, instance) {
        this.cls = cls;
        this.instance = instance;
    }

    held(name) {
        return this.instance.properties.get(name) ?? { value: null, applicable: true, choices: null };
    }

    /** The server's value as a text; NULL is the empty text. */
    stored(name) {
        return [this.held(name).value ?? ''].flat().join(', ');
    }

    value(name) {
        return this.#changes.get(name)?.value ?? this.stored(name);
    }

    set(name, value) {
        const base = this.#changes.get(name)?.base ?? this.stored(name);
        this.discard(name);
        if (value !== this.stored(name)) {
            this.#changes.set(name, { value, base });
        }
    }

    isChanged(name) {
        return this.#changes.has(name);
    }

    /** What the server holds now, when it is no longer what the change began from; else null. */
    conflict(name) {
        const change = this.#changes.get(name);
        return change && change.base !== this.stored(name) ? this.stored(name) : null;
    }

    hasConflict() {
        return [...this.#changes.keys()].some((name) => this.conflict(name) !== null);
    }

    /** The conflict was seen; the change is to replace the server's value all the same. */
    keep(name) {
        this.#changes.get(name).base = this.stored(name);
    }

    discard(name) {
        for (const map of [this.#changes, this.refusals, this.notices, this.news]) {
            map.delete(name);
        }
    }

    discardAll() {
        for (const map of [this.#changes, this.refusals, this.notices, this.news]) {
            map.clear();
        }
    }

    /** Whether a property has a meaning: with the present changes, where its description tells the rule. */
    applies(property) {
        const rule = ruleIn(property.description);
        if (rule && this.isChanged(rule.property)) {
            return rule.values.includes(this.value(rule.property)) === rule.applies;
        }
        return this.held(property.name).applicable;
    }

    /** What is to be sent, in the order of the class, in which the server applies it. */
    changes() {
        return this.cls.properties
            .filter((property) => this.isChanged(property.name) && this.applies(property))
            .map(({ name, type }) => ({ name, type, value: this.value(name) }));
    }

    /** Takes over the instance as the server tells it now. */
    observe(instance, at = Date.now()) {
        const before = new Map(this.cls.properties.map(({ name }) => [name, this.stored(name)]));
        this.#take(instance);
        for (const { name, writable } of this.cls.properties) {
            if (writable && !this.isChanged(name) && before.get(name) !== this.stored(name)) {
                this.news.set(name, { from: before.get(name), at });
            }
        }
    }

    /** The server has taken what was sent. */
    settle(sent, instance) {
        this.refusals.clear();
        sent.forEach(({ name }) => this.discard(name));
        this.#take(instance);
        for (const { name, value } of sent.filter((one) => this.held(one.name).applicable)) {
            if (value !== this.stored(name)) {
                this.notices.set(name, this.stored(name));
            }
        }
    }

    /** The server has refused one of what was sent: the one it names, or the first that it did not apply. */
    refuse(sent, instance, error) {
        this.refusals.clear();
        this.#take(instance);
        const left = sent.filter(({ name }) => this.isChanged(name));
        const culprit = left.find(({ name }) => error.message.includes(name)) ?? left[0];
        const isOfOne = error.code !== 2 && culprit; // access is denied to all
        this.refusals.set(isOfOne ? culprit.name : '', error.message);
    }

    /** Changes that the server holds already are none. */
    #take(instance) {
        this.instance = instance;
        for (const [name, { value }] of this.#changes) {
            if (value === this.stored(name)) {
                this.#changes.delete(name);
            }
        }
    }
}
