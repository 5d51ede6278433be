// All texts of the console. English names and help of properties come from the schema; other languages give theirs
// under "schema", by class and property, and the schema's stand in for what is missing.

const texts = {
    en: {
        language: 'English',
        title: 'Call records',
        nav: 'Pages',
        settings: 'Settings',
        bins: 'Digit bins',
        push: 'Push transfer',
        statistics: 'Statistics',
        more: 'Other classes',
        plain: 'All properties of {class}',
        skip: 'Skip to the page',
        chooseLanguage: 'Language',
        // the state of the page
        connecting: 'Connecting …',
        live: 'Live, read at {time}',
        paused: 'Paused',
        lost: 'No connection',
        gone: 'The server has not answered since {time}. What you see may be out of date; it is read again as soon as the server is back.',
        tryNow: 'Try now',
        back: 'The server is back.',
        // signing in
        signIn: 'Sign in',
        signInHelp: 'This server serves its users only. The password stays in the memory of this page.',
        signInWrong: 'The server does not know this user, or the password is wrong.',
        signOut: 'Sign out {user}',
        user: 'User',
        password: 'Password',
        // changing
        save: 'Save',
        discard: 'Discard',
        changedOne: '1 unsaved change',
        changedMany: '{count} unsaved changes',
        saved: 'Saved.',
        decide: 'Another client has changed some of this meanwhile. Decide at the marked fields, then save.',
        conflict: 'Meanwhile another client has set this to “{value}”.',
        takeTheirs: 'Take “{value}”',
        keepMine: 'Keep mine',
        news: 'Another client changed this; it was “{value}”.',
        notice: 'The device keeps this as “{value}”.',
        refusedAll: 'The server refused the change: {text}',
        '301': 'This setting does not take the value. ',
        '101': 'The device could not store it. ',
        notApplicable: 'Does not apply at present. {rule}',
        onlyWhile: 'Applies only while “{title}” is {values}.',
        notWhile: 'Does not apply while “{title}” is {values}.',
        or: ' or ',
        quoted: '“{value}”',
        empty: 'empty',
        unknown: 'not known yet',
        yes: 'Yes',
        no: 'No',
        range: '{least} to {most}.',
        longest: 'Up to {count} characters.',
        noInstances: 'There are no instances.',
        problem: 'This cannot be shown: {text}',
        // methods
        run: 'Run',
        cancel: 'Cancel',
        running: 'Running …',
        returned: 'Done. It returned {value}.',
        failed: 'It failed: {text}',
        // groups of settings
        report: 'Report',
        digits: 'Dialled digits',
        file: 'Record file',
        contents: 'What is recorded',
        // bins
        row: 'No.',
        cell: '{title}, no. {row}',
        // push
        schedule: 'When',
        destination: 'Where to',
        files: 'Files',
        nextRun: 'Next run',
        nextRunHelp: 'By this browser’s clock and time zone; the device goes by its own.',
        noRun: 'None: no push is scheduled.',
        afterSaving: '{text} (once saved)',
        daily: 'Every day at {time}',
        weekly: 'Every {day} at {time}',
        monthly: 'On day {day} of each month at {time}',
        dayOfMonth: 'Day {day}',
        lastTransfer: 'Last transfer',
        never: 'None yet',
        pushNow: 'Push now',
        pushBegun: 'The transfer program was called. Files that arrive change the last transfer above.',
        arrived: '{time}: files have arrived',
        // statistics
        chart: 'Over the time this page is open',
        chartOf: 'Show',
        chartEmpty: 'The chart begins with the next reading.',
        chartText: '{title}: {first} at {from}, {last} at {to}, highest {most}.',
    },
    de: {
        language: 'Deutsch',
        title: 'Gesprächsdaten',
        nav: 'Seiten',
        settings: 'Einstellungen',
        bins: 'Ziffernfächer',
        push: 'Übertragung',
        statistics: 'Statistik',
        more: 'Weitere Klassen',
        plain: 'Alle Eigenschaften von {class}',
        skip: 'Zur Seite springen',
        chooseLanguage: 'Sprache',
        connecting: 'Verbindung wird aufgebaut …',
        live: 'Aktuell, gelesen um {time}',
        paused: 'Angehalten',
        lost: 'Keine Verbindung',
        gone: 'Der Server antwortet seit {time} nicht. Das Angezeigte kann veraltet sein; es wird neu gelesen, sobald der Server wieder da ist.',
        tryNow: 'Jetzt versuchen',
        back: 'Der Server ist wieder da.',
        signIn: 'Anmelden',
        signInHelp: 'Dieser Server bedient nur seine Benutzer. Das Kennwort bleibt im Speicher dieser Seite.',
        signInWrong: 'Der Server kennt diesen Benutzer nicht, oder das Kennwort ist falsch.',
        signOut: '{user} abmelden',
        user: 'Benutzer',
        password: 'Kennwort',
        save: 'Speichern',
        discard: 'Verwerfen',
        changedOne: '1 ungespeicherte Änderung',
        changedMany: '{count} ungespeicherte Änderungen',
        saved: 'Gespeichert.',
        decide: 'Ein anderer Client hat inzwischen etwas davon geändert. Entscheiden Sie bei den markierten Feldern, dann speichern Sie.',
        conflict: 'Ein anderer Client hat dies inzwischen auf „{value}“ gesetzt.',
        takeTheirs: '„{value}“ übernehmen',
        keepMine: 'Meinen Wert behalten',
        news: 'Ein anderer Client hat dies geändert; es war „{value}“.',
        notice: 'Das Gerät behält dies als „{value}“.',
        refusedAll: 'Der Server hat die Änderung abgelehnt: {text}',
        '301': 'Diese Einstellung nimmt den Wert nicht an. ',
        '101': 'Das Gerät konnte ihn nicht speichern. ',
        notApplicable: 'Gilt derzeit nicht. {rule}',
        onlyWhile: 'Gilt nur, solange „{title}“ auf {values} steht.',
        notWhile: 'Gilt nicht, solange „{title}“ auf {values} steht.',
        or: ' oder ',
        quoted: '„{value}“',
        empty: 'leer',
        unknown: 'noch nicht bekannt',
        yes: 'Ja',
        no: 'Nein',
        range: '{least} bis {most}.',
        longest: 'Bis zu {count} Zeichen.',
        noInstances: 'Es gibt keine Instanzen.',
        problem: 'Dies kann nicht angezeigt werden: {text}',
        run: 'Ausführen',
        cancel: 'Abbrechen',
        running: 'Läuft …',
        returned: 'Fertig. Ergebnis: {value}.',
        failed: 'Fehlgeschlagen: {text}',
        report: 'Bericht',
        digits: 'Gewählte Ziffern',
        file: 'Datei der Datensätze',
        contents: 'Was aufgezeichnet wird',
        row: 'Nr.',
        cell: '{title}, Nr. {row}',
        schedule: 'Wann',
        destination: 'Wohin',
        files: 'Dateien',
        nextRun: 'Nächste Übertragung',
        nextRunHelp: 'Nach Uhr und Zeitzone dieses Browsers; das Gerät richtet sich nach seiner eigenen.',
        noRun: 'Keine: Es ist keine Übertragung geplant.',
        afterSaving: '{text} (nach dem Speichern)',
        daily: 'Täglich um {time}',
        weekly: 'Jeden {day} um {time}',
        monthly: 'Am {day}. jedes Monats um {time}',
        dayOfMonth: '{day}.',
        lastTransfer: 'Letzte Übertragung',
        never: 'Noch keine',
        pushNow: 'Jetzt übertragen',
        pushBegun: 'Das Übertragungsprogramm wurde aufgerufen. Dateien, die ankommen, ändern die letzte Übertragung oben.',
        arrived: '{time}: Dateien sind angekommen',
        chart: 'Seit dem Öffnen dieser Seite',
        chartOf: 'Zeige',
        chartEmpty: 'Der Verlauf beginnt mit der nächsten Ablesung.',
        chartText: '{title}: {first} um {from}, {last} um {to}, höchstens {most}.',
        schema: {
            QTX_CDRService: {
                '': ['Gesprächsdatendienst', 'Die Einstellungen des Berichts. Jede Änderung wird dem Dienst sofort mitgeteilt.'],
                Format: ['Satzformat', 'Format der Datensätze. Davon hängt ab, welche Berichtsarten möglich sind.'],
                ReportType: ['Berichtsart', '0 und 1 bei Satzformat 0, sonst 0 bis 3.'],
                Language: ['Sprache', 'Sprache des Berichts.'],
                ReportFilter: ['Filter', 'Welche Gespräche im Bericht stehen.'],
                FeatureCode: ['Leistungsmerkmal', 'Zwei Dezimalziffern. Ein anderes Zeichen wird als 0 gespeichert, ein drittes nicht beachtet.'],
                DateFormat: ['Datumsformat', 'Format der Daten im Bericht.'],
                HeaderFormat: ['Kopfformat', 'Format des Berichtskopfes.'],
                DNISInfo: ['Gewählte Nummer', 'Ob die gewählte Nummer (DNIS) zum Datensatz gehört.'],
                ConnectChar: ['Verbindungszeichen', 'Verbindungszeichen eines Datensatzes.'],
                DigitsSuppress: ['Ziffernunterdrückung', 'Wie gewählte Ziffern im Datensatz unterdrückt werden.'],
                DigitsLimit: ['Höchstzahl der Ziffern', 'So viele gewählte Ziffern stehen höchstens im Datensatz.'],
                ClipFileSchedule: ['Zeitplan des Abschlusses', 'Wann die Datei der Datensätze abgeschlossen wird.'],
                ClipFileSize_100K: ['Größe des Abschlusses', 'Größe, bei der die Datei abgeschlossen wird. Werte über 255 gelten modulo 256.'],
                CDRDiskSpaceLimit_MB: ['Speicherplatz', 'Platz, den die Dateien einnehmen dürfen.'],
                CLIDWithName: ['Rufnummer mit Namen', 'Ob neben der Nummer der Name des Anrufers steht.'],
                LongCLIDSupport: ['Lange Rufnummern', 'Ob lange Rufnummern aufgezeichnet werden.'],
                CLIDWithCallType: ['Rufnummer mit Gesprächsart', 'Ob neben der Nummer die Art des Gesprächs steht.'],
                SupportCallCharge: ['Gebühren', 'Ob Gesprächsgebühren aufgezeichnet werden.'],
                AnswerSupervision: ['Antwortüberwachung', 'Ob die Antwortüberwachung verwendet wird.'],
                CallFilterDuration: ['Mindestdauer', 'Kürzere Gespräche fehlen im Bericht. Werte über 255 gelten modulo 256.'],
                HospitalityRecords: ['Hoteldatensätze', 'Ob Hoteldatensätze geschrieben werden.'],
                Refresh: ['Aktualisieren', 'Zählt eine Aktualisierung. Einstellungen werden ohnehin bei jeder Anfrage gelesen.'],
                ClipFile: ['Datei abschließen', 'Lässt den Dienst die laufende Datei jetzt abschließen.'],
            },
            QTX_CDRServicePrefixBin: {
                '': ['Vorwahlfächer', 'Acht Folgen gewählter Ziffern.'],
                PrefixBin: ['Vorwahl', 'Bis zu 8 Dezimalziffern.'],
            },
            QTX_CDRServiceAccessBin: {
                '': ['Zugangsfächer', 'Fünf Folgen gewählter Ziffern und wie viele Ziffern unterdrückt werden.'],
                AccessBin: ['Zugangsziffern', 'Bis zu 5 Dezimalziffern.'],
                SuppressBin: ['Unterdrückte Ziffern', 'Eine Zahl von 0 bis 16.'],
            },
            QTX_CDRPushSetting: {
                '': ['Übertragung', 'Die geplante Übertragung der Dateien zu einem anderen Rechner.'],
                TransferType: ['Art der Übertragung', 'Bei „Abholung“ und „Keine“ wird nichts geplant.',
                    { 0: 'Täglich', 1: 'Wöchentlich', 2: 'Monatlich', 3: 'Abholung', 4: 'Keine' }],
                IPAddress: ['Adresse', 'Adresse des Rechners, zu dem die Dateien gehen.'],
                UserName: ['Benutzer', 'Name des Kontos auf dem Rechner.'],
                Password: ['Kennwort', 'Kennwort des Kontos.'],
                DestFolder: ['Ordner', 'Ordner auf dem Rechner.'],
                NumRetry: ['Wiederholungen', 'Wie oft eine Übertragung wiederholt wird, die scheitert. Werte über 255 gelten modulo 256.'],
                DeleteFlag: ['Danach löschen', 'Ob die Dateien nach der Übertragung gelöscht werden.'],
                CompressFlag: ['Komprimieren', 'Ob die Dateien komprimiert werden.'],
                IncludeMetricsFlag: ['Mit Messwerten', 'Ob Messwerte mit übertragen werden.'],
                TransferTime: ['Uhrzeit', 'Uhrzeit der Übertragung.'],
                TransferDayOfMonth: ['Tag im Monat', 'Tag einer monatlichen Übertragung.'],
                TransferDayOfWeek: ['Wochentag', 'Tag einer wöchentlichen Übertragung.',
                    { 0: 'Sonntag', 1: 'Montag', 2: 'Dienstag', 3: 'Mittwoch', 4: 'Donnerstag', 5: 'Freitag', 6: 'Samstag' }],
                PushFileNow: ['Jetzt übertragen', 'Lässt das Übertragungsprogramm sofort laufen und wartet darauf.'],
            },
            QTX_CDRPushStatistics: {
                '': ['Statistik der Übertragung', 'Wann zuletzt übertragen wurde.'],
                LastTransferTime: ['Letzte Übertragung', 'Zeit der letzten Übertragung.'],
                Refresh: ['Aktualisieren', 'Liest die Statistik neu.'],
            },
            QTX_CDRPullStatistics: {
                '': ['Statistik der Abholung', 'Dateien, die ein anderer Rechner abgeholt hat.'],
                MostRecentSuccessfulTransfer: ['Letzter Erfolg', 'Zeit der letzten erfolgreichen Übertragung.'],
                IncludeMetricsFlag: ['Mit Messwerten', 'Ob Messwerte mit übertragen werden.'],
                NumberOfSuccessfulTransfers: ['Erfolgreiche Übertragungen', 'Zahl der erfolgreichen Übertragungen.'],
                MostRecentFailedTransfer: ['Letzter Fehlschlag', 'Zeit der letzten gescheiterten Übertragung.'],
                ReasonForFailure: ['Grund des Fehlschlags', 'Warum die letzte gescheiterte Übertragung scheiterte.'],
                NumberOfFailedTransfers: ['Gescheiterte Übertragungen', 'Zahl der gescheiterten Übertragungen.'],
                LargestFileTransferred: ['Größte Datei', 'Größe der größten übertragenen Datei.'],
                SmallestFileTransferred: ['Kleinste Datei', 'Größe der kleinsten übertragenen Datei.'],
                TotalNumberOfBytesTransferred: ['Übertragene Bytes', 'Insgesamt übertragene Bytes.'],
                TotalNumberOfFileTransferred: ['Übertragene Dateien', 'Insgesamt übertragene Dateien.'],
                Refresh: ['Statistik löschen', 'Löscht die Statistik: Jede Zahl wird 0, jeder Text leer.'],
            },
        },
    },
};

/** The languages there are, as pairs of code and own name. */
export const languages = Object.entries(texts).map(([code, { language }]) => [code, language]);

let current = texts[globalThis.navigator?.language?.slice(0, 2)] ? navigator.language.slice(0, 2) : 'en';

export const language = () => current;

/** Changes the language of all texts made from now on. */
export function setLanguage(code) {
    current = code;
}

/** The text of that name with its {places} filled; null when there is none. */
export function t(name, values = {}) {
    const text = texts[current][name] ?? texts.en[name];
    return text?.replace(/\{(\w+)\}/g, (_, place) => values[place] ?? '') ?? null;
}

const translated = (cls, name) => texts[current].schema?.[cls.name]?.[name];

/** The title of a class, or of one of its properties and methods. */
export function titleOf(cls, member) {
    return translated(cls, member?.name ?? '')?.[0] ?? (member ?? cls).title;
}

/** What the schema tells of a class, or of one of its properties and methods. */
export function helpOf(cls, member) {
    return translated(cls, member?.name ?? '')?.[1] ?? (member ?? cls).description;
}

/** Pairs of a value of the property and its words; null when any value may occur. */
export function choicesOf(cls, property) {
    const own = translated(cls, property.name)?.[2];
    return property.choices?.map(([value, word]) => [value, own?.[value] ?? word]) ?? null;
}

const formatOf = (options) => new Intl.DateTimeFormat(current, options);

export const timeText = (date, seconds = false) =>
    formatOf({ hour: '2-digit', minute: '2-digit', ...(seconds && { second: '2-digit' }) }).format(date);

export const dateTimeText = (date) => formatOf({ dateStyle: 'full', timeStyle: 'short' }).format(date);

export const numberText = (number) => new Intl.NumberFormat(current).format(number);

/** A CIM date and time, "20261122083000.000000+060", as a person reads it; null for an interval or anything else. */
export function cimTimeText(text) {
    const found = /^(\d{4})(\d\d)(\d\d)(\d\d)(\d\d)(\d\d)\.\d{6}([+-]\d{3})$/.exec(text);
    if (!found) {
        return null;
    }
    const [year, month, day, hour, minute, second, offset] = found.slice(1).map(Number);
    return dateTimeText(new Date(Date.UTC(year, month - 1, day, hour, minute - offset, second)));
}
