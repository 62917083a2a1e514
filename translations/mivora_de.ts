<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AccountsHint</name>
    <message>
        <source>Internet Accounts</source>
        <translation>Online‑Konten</translation>
    </message>
    <message>
        <source>Using Google or Outlook? Add the account in %1 and its calendars show up here.</source>
        <translation>Sie nutzen Google oder Outlook? Fügen Sie das Konto unter %1 hinzu, dann erscheinen seine Kalender hier.</translation>
    </message>
</context>
<context>
    <name>Agenda</name>
    <message>
        <source>No more meetings today</source>
        <translation>Heute keine weiteren Besprechungen</translation>
    </message>
    <message>
        <source>Tomorrow</source>
        <translation>Morgen</translation>
    </message>
    <message>
        <source>Next: %1</source>
        <translation>Als Nächstes: %1</translation>
    </message>
    <message>
        <source>Join: %1</source>
        <translation>Teilnehmen: %1</translation>
    </message>
    <message>
        <source>left out: its title</source>
        <translation>ausgelassen: ihr Titel</translation>
    </message>
    <message>
        <source>left out: not accepted</source>
        <translation>ausgelassen: nicht zugesagt</translation>
    </message>
    <message>
        <source>left out: nobody else</source>
        <translation>ausgelassen: niemand sonst</translation>
    </message>
</context>
<context>
    <name>AlertView</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Application</name>
    <message>
        <source>Join the next meeting</source>
        <translation>An der nächsten Besprechung teilnehmen</translation>
    </message>
    <message>
        <source>Mivora does not answer; if that goes on, end it with `pkill -x mivora` and start it again</source>
        <translation>Mivora antwortet nicht; bleibt es dabei, beenden Sie es mit `pkill -x mivora` und starten Sie es neu</translation>
    </message>
</context>
<context>
    <name>BrowserSection</name>
    <message>
        <source>Open in the browser instead of the app</source>
        <translation>Im Browser statt in der App öffnen</translation>
    </message>
    <message>
        <source>By default Join opens the Zoom or Teams app when it&apos;s installed, so there&apos;s no browser interstitial.</source>
        <translation>Normalerweise öffnet „Teilnehmen“ die App von Zoom oder Teams, sofern sie installiert ist. So entfällt der Umweg über den Browser.</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Microsoft Teams</source>
        <translation>Microsoft Teams</translation>
    </message>
</context>
<context>
    <name>CalendarList</name>
    <message>
        <source>Google or Outlook calendar missing? Add the account under System Settings → Internet Accounts and it appears here.</source>
        <translation>Fehlt ein Kalender von Google oder Outlook? Fügen Sie das Konto unter Online-Konten hinzu, dann erscheint er hier.</translation>
    </message>
    <message>
        <source>Subscribe to a calendar…</source>
        <translation>Kalender abonnieren&#xa0;…</translation>
    </message>
    <message>
        <source>Google or Outlook calendar missing? Subscribe to its private address and it appears here.</source>
        <translation>Fehlt ein Kalender von Google oder Outlook? Abonnieren Sie seine private Adresse, dann erscheint er hier.</translation>
    </message>
</context>
<context>
    <name>CalendarRow</name>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten&#xa0;…</translation>
    </message>
</context>
<context>
    <name>CalendarStep</name>
    <message>
        <source>Let Mivora read your calendar</source>
        <translation>Darf Mivora Ihren Kalender lesen?</translation>
    </message>
    <message>
        <source>Mivora needs Full Access to see your meetings and their Join links. It reads them on this Mac and never stores or uploads anything.</source>
        <translation>Mivora muss Ihre Besprechungen und deren Links sehen können. Gelesen wird nur auf diesem Computer; nichts wird gespeichert oder hochgeladen.</translation>
    </message>
    <message>
        <source>Allow Calendar Access</source>
        <translation>Kalenderzugriff erlauben</translation>
    </message>
    <message>
        <source>Access granted</source>
        <translation>Zugriff erlaubt</translation>
    </message>
    <message>
        <source>Open System Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Turn on Mivora under Privacy &amp; Security → Calendars, then come back here.</source>
        <translation>Mivora konnte keinen Kalender lesen. Fügen Sie einen hinzu und kommen Sie dann hierher zurück.</translation>
    </message>
    <message>
        <source>Mivora can&apos;t read your calendars: this system does not allow it.</source>
        <translation>Mivora kann Ihre Kalender nicht lesen: Dieses System erlaubt es nicht.</translation>
    </message>
    <message>
        <source>Using Google or Outlook? Subscribe to the calendar&apos;s private address in Settings.</source>
        <translation>Nutzen Sie Google oder Outlook? Abonnieren Sie in den Einstellungen die private Adresse des Kalenders.</translation>
    </message>
    <message>
        <source>No calendar found</source>
        <translation>Kein Kalender gefunden</translation>
    </message>
    <message>
        <source>Mivora may read your calendars, but there is none yet. These are the ways to one:</source>
        <translation>Mivora darf Ihre Kalender lesen, aber noch gibt es keinen. So kommen Sie zu einem:</translation>
    </message>
</context>
<context>
    <name>CalendarsPage</name>
    <message>
        <source>Calendar access</source>
        <translation>Kalenderzugriff</translation>
    </message>
    <message>
        <source>Mivora can&apos;t read your calendars until you allow it under Privacy &amp; Security → Calendars.</source>
        <translation>Mivora kann Ihre Kalender erst lesen, wenn Sie es erlauben.</translation>
    </message>
    <message>
        <source>Open System Settings…</source>
        <translation>Einstellungen öffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Mivora can&apos;t read your calendars until you allow it.</source>
        <translation>Mivora kann Ihre Kalender erst lesen, wenn Sie es erlauben.</translation>
    </message>
    <message>
        <source>Mivora can&apos;t read your calendars: this system does not allow it.</source>
        <translation>Mivora kann Ihre Kalender nicht lesen: Dieses System erlaubt es nicht.</translation>
    </message>
    <message>
        <source>Allow Calendar Access</source>
        <translation>Kalenderzugriff erlauben</translation>
    </message>
    <message>
        <source>No calendar found</source>
        <translation>Kein Kalender gefunden</translation>
    </message>
    <message>
        <source>Mivora may read your calendars, but there is none yet. These are the ways to one:</source>
        <translation>Mivora darf Ihre Kalender lesen, aber noch gibt es keinen. So kommen Sie zu einem:</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Print today&apos;s meetings, the next one and its countdown</source>
        <translation>Die Besprechungen von heute, die nächste und die Zeit bis dahin ausgeben</translation>
    </message>
    <message>
        <source>Print one JSON object (with --follow, one a line)</source>
        <translation>Ein JSON-Objekt ausgeben (mit --follow eines je Zeile)</translation>
    </message>
    <message>
        <source>Go on and print a line whenever something changes</source>
        <translation>Weiterlaufen und bei jeder Änderung eine Zeile ausgeben</translation>
    </message>
    <message>
        <source>expected an RFC 3339 time such as %1, got &quot;%2&quot;</source>
        <translation>erwartet wird eine Zeit nach RFC&#xa0;3339 wie %1, angegeben ist „%2“</translation>
    </message>
    <message>
        <source>Show the agenda of this time (RFC 3339)</source>
        <translation>Die Besprechungen zu dieser Zeit zeigen (RFC&#xa0;3339)</translation>
    </message>
    <message>
        <source>Read this folder of iCalendar files instead of your own</source>
        <translation>Diesen Ordner mit iCalendar-Dateien anstelle Ihrer Kalender lesen</translation>
    </message>
    <message>
        <source>Print the join link of an event&apos;s texts</source>
        <translation>Den Besprechungslink in den Texten eines Termins ausgeben</translation>
    </message>
    <message>
        <source>Print a JSON object, or null</source>
        <translation>Ein JSON-Objekt oder null ausgeben</translation>
    </message>
    <message>
        <source>The event&apos;s URL</source>
        <translation>Die URL des Termins</translation>
    </message>
    <message>
        <source>The event&apos;s location</source>
        <translation>Der Ort des Termins</translation>
    </message>
    <message>
        <source>The event&apos;s notes</source>
        <translation>Die Notizen des Termins</translation>
    </message>
    <message>
        <source>Join the meeting of the panel, or else the next one with a link</source>
        <translation>An der Besprechung im Fenster teilnehmen, sonst an der nächsten mit Link</translation>
    </message>
    <message>
        <source>Hide the panel for a minute</source>
        <translation>Das Teilnahmefenster eine Minute lang ausblenden</translation>
    </message>
    <message>
        <source>Hide the panel of this meeting</source>
        <translation>Das Teilnahmefenster dieser Besprechung ausblenden</translation>
    </message>
    <message>
        <source>Copy the join link of the meeting that would be joined</source>
        <translation>Den Link der Besprechung kopieren, an der Sie teilnehmen würden</translation>
    </message>
    <message>
        <source>Open the settings</source>
        <translation>Die Einstellungen öffnen</translation>
    </message>
    <message>
        <source>The page to open</source>
        <translation>Die Seite, die geöffnet werden soll</translation>
    </message>
    <message>
        <source>End the running program</source>
        <translation>Das laufende Programm beenden</translation>
    </message>
    <message>
        <source>Read and write the settings store; lists are JSON arrays</source>
        <translation>Gespeicherte Einstellungen lesen und schreiben; Listen sind JSON-Arrays</translation>
    </message>
    <message>
        <source>The setting&apos;s key</source>
        <translation>Der Schlüssel der Einstellung</translation>
    </message>
    <message>
        <source>Print all settings</source>
        <translation>Alle Einstellungen ausgeben</translation>
    </message>
    <message>
        <source>Print one setting</source>
        <translation>Eine Einstellung ausgeben</translation>
    </message>
    <message>
        <source>Set one setting</source>
        <translation>Eine Einstellung setzen</translation>
    </message>
    <message>
        <source>The new value</source>
        <translation>Der neue Wert</translation>
    </message>
    <message>
        <source>Remove one setting, so that its default holds</source>
        <translation>Eine Einstellung entfernen, sodass ihre Vorgabe gilt</translation>
    </message>
    <message>
        <source>Show, give or take back the permission to read your calendars</source>
        <translation>Die Erlaubnis, Ihre Kalender zu lesen, anzeigen, erteilen oder entziehen</translation>
    </message>
    <message>
        <source>Print granted, denied or notDetermined</source>
        <translation>granted, denied oder notDetermined ausgeben</translation>
    </message>
    <message>
        <source>Let Mivora read your calendars</source>
        <translation>Mivora das Lesen Ihrer Kalender erlauben</translation>
    </message>
    <message>
        <source>Forget the permission</source>
        <translation>Die Erlaubnis vergessen</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Aufruf</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not expected; expected %2</source>
        <translation>„%1“ wurde nicht erwartet; möglich sind %2</translation>
    </message>
    <message>
        <source>%1: expected one of %2</source>
        <translation>%1: erwartet wird eines von %2</translation>
    </message>
    <message>
        <source>Print the version and end</source>
        <translation>Die Version ausgeben und beenden</translation>
    </message>
    <message>
        <source>Print this help and end</source>
        <translation>Diese Hilfe ausgeben und beenden</translation>
    </message>
    <message>
        <source>Start for the session bus, which asks for what it wants then</source>
        <translation>Für den Sitzungsbus starten, der danach sagt, was er möchte</translation>
    </message>
    <message>
        <source>Start with the session, as a service of systemd where that runs it</source>
        <translation>Mit der Sitzung starten, als Dienst von systemd, wo dieses sie ausführt</translation>
    </message>
    <message>
        <source>%1 (mivora --help lists the arguments)</source>
        <translation>%1 (mivora --help führt die Argumente auf)</translation>
    </message>
    <message>
        <source>%1 can&apos;t be written; check the folder&apos;s permissions</source>
        <translation>%1 kann nicht geschrieben werden; prüfen Sie die Rechte des Ordners</translation>
    </message>
    <message>
        <source>--calendars: there is no folder &quot;%1&quot;; name one that holds iCalendar files</source>
        <translation>--calendars: Es gibt keinen Ordner „%1“; geben Sie einen mit iCalendar-Dateien an</translation>
    </message>
    <message>
        <source>--calendars: &quot;%1&quot; is no folder; name the folder that holds it</source>
        <translation>--calendars: „%1“ ist kein Ordner; geben Sie den Ordner an, der die Datei enthält</translation>
    </message>
    <message>
        <source>--calendars: &quot;%1&quot; can&apos;t be read; check its permissions</source>
        <translation>--calendars: „%1“ kann nicht gelesen werden; prüfen Sie die Rechte</translation>
    </message>
    <message>
        <source>no access to your calendars yet; `mivora access allow` gives it</source>
        <translation>noch kein Zugriff auf Ihre Kalender; `mivora access allow` erteilt ihn</translation>
    </message>
    <message>
        <source>no calendars can be read; add one to the desktop&apos;s calendar, put a folder of iCalendar files at ~/.calendars, or name one with --calendars DIR or $MIVORA_CALENDARS</source>
        <translation>es können keine Kalender gelesen werden; fügen Sie dem Kalender des Desktops einen hinzu, legen Sie unter ~/.calendars einen Ordner mit iCalendar-Dateien an oder geben Sie einen mit --calendars DIR oder $MIVORA_CALENDARS an</translation>
    </message>
    <message>
        <source>the calendars took too long to load; what is shown is not all</source>
        <translation>das Laden der Kalender hat zu lange gedauert; es wird nicht alles angezeigt</translation>
    </message>
    <message>
        <source>KEY: expected one of %1, got &quot;%2&quot;</source>
        <translation>KEY: erwartet wird eines von %1, angegeben ist „%2“</translation>
    </message>
    <message>
        <source>%1 is not set</source>
        <translation>%1 ist nicht gesetzt</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>eine ganze Zahl</translation>
    </message>
    <message>
        <source>a JSON array of strings</source>
        <translation>ein JSON-Array aus Zeichenketten</translation>
    </message>
    <message>
        <source>VALUE of %1: expected %2, got &quot;%3&quot;</source>
        <translation>VALUE von %1: erwartet wird %2, angegeben ist „%3“</translation>
    </message>
    <message>
        <source>no join link found: none of the texts holds an https link</source>
        <translation>kein Besprechungslink gefunden: keiner der Texte enthält einen https-Link</translation>
    </message>
    <message>
        <source>Mivora is not running; start it with `mivora`</source>
        <translation>Mivora läuft nicht; starten Sie es mit `mivora`</translation>
    </message>
    <message>
        <source>Mivora runs already but does not answer; end it with `pkill -x mivora` and start it again</source>
        <translation>Mivora läuft bereits, antwortet aber nicht; beenden Sie es mit `pkill -x mivora` und starten Sie es neu</translation>
    </message>
    <message>
        <source>there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set</source>
        <translation>es gibt keinen Bildschirm: weder DISPLAY noch WAYLAND_DISPLAY ist gesetzt</translation>
    </message>
    <message>
        <source>Shows a countdown to your next meeting and joins it.
Without a command: start, or open the settings of the one that runs.

Calendars are read from your desktop&apos;s accounts and from folders of iCalendar files:
$MIVORA_CALENDARS (separated by colons), or ~/.calendars and ~/.local/share/calendars.</source>
        <translation>Zeigt die Zeit bis zu Ihrer nächsten Besprechung und öffnet sie.
Ohne Befehl: starten oder die Einstellungen des laufenden Programms öffnen.

Kalender werden aus den Konten Ihres Desktops und aus Ordnern mit iCalendar-Dateien gelesen:
$MIVORA_CALENDARS (durch Doppelpunkte getrennt), sonst ~/.calendars und ~/.local/share/calendars.</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>OPTIONEN</translation>
    </message>
    <message>
        <source>SUBCOMMAND</source>
        <translation>BEFEHL</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>there is no session bus to reach Mivora on; run this in your desktop session</source>
        <translation>kein Sitzungsbus, über den Mivora zu erreichen wäre; führen Sie dies in Ihrer Desktopsitzung aus</translation>
    </message>
    <message>
        <source>the display can&apos;t be used: %1</source>
        <translation>der Bildschirm ist nicht zu erreichen: %1</translation>
    </message>
    <message>
        <source>one of %1</source>
        <translation>eines von %1</translation>
    </message>
    <message>
        <source>%1 knows only %2; &quot;%3&quot; is kept, but read as %4</source>
        <translation>%1 kennt nur %2; „%3“ bleibt gespeichert, gilt aber als %4</translation>
    </message>
    <message>
        <source>Show today&apos;s meetings in a small window</source>
        <translation>Die Besprechungen von heute in einem kleinen Fenster zeigen</translation>
    </message>
    <message>
        <source>Subscribe to calendars by their addresses, and list these calendars</source>
        <translation>Kalender über ihre Adressen abonnieren und die abonnierten auflisten</translation>
    </message>
    <message>
        <source>The calendar&apos;s ID, as listed</source>
        <translation>Die ID des Kalenders aus der Liste</translation>
    </message>
    <message>
        <source>The calendar&apos;s name</source>
        <translation>Der Name des Kalenders</translation>
    </message>
    <message>
        <source>Fetch the subscribed calendars now and print them</source>
        <translation>Die abonnierten Kalender jetzt abrufen und ausgeben</translation>
    </message>
    <message>
        <source>Subscribe to a calendar</source>
        <translation>Einen Kalender abonnieren</translation>
    </message>
    <message>
        <source>An https: or webcal: address; read from standard input when it isn&apos;t given</source>
        <translation>Eine Adresse mit https: oder webcal:; ohne Angabe wird sie von der Standardeingabe gelesen</translation>
    </message>
    <message>
        <source>Remove a subscribed calendar</source>
        <translation>Einen abonnierten Kalender entfernen</translation>
    </message>
    <message>
        <source>Rename a subscribed calendar</source>
        <translation>Einen abonnierten Kalender umbenennen</translation>
    </message>
    <message>
        <source>Hide titles in the tray and on the panel, or show them again</source>
        <translation>Titel in der Systemleiste und im Teilnahmefenster ausblenden oder wieder zeigen</translation>
    </message>
    <message>
        <source>Show what the settings leave out too, with the reason</source>
        <translation>Auch zeigen, was die Einstellungen auslassen, mit dem Grund</translation>
    </message>
    <message>
        <source>What becomes of them</source>
        <translation>Was mit ihnen geschehen soll</translation>
    </message>
    <message>
        <source>Print a line whenever a meeting is due, joined, started or ended</source>
        <translation>Eine Zeile ausgeben, wenn eine Besprechung ansteht, beginnt oder endet und wenn Sie teilnehmen</translation>
    </message>
    <message>
        <source>Print one JSON object a line</source>
        <translation>Ein JSON-Objekt je Zeile ausgeben</translation>
    </message>
</context>
<context>
    <name>CommandLineTexts</name>
    <message>
        <source>Address of the calendar:</source>
        <translation>Adresse des Kalenders:</translation>
    </message>
</context>
<context>
    <name>Countdown</name>
    <message>
        <source>now</source>
        <translation>jetzt</translation>
    </message>
    <message>
        <source>%1m</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>%1h</source>
        <translation>%1&#xa0;h</translation>
    </message>
    <message>
        <source>%1h %2m</source>
        <translation>%1&#xa0;h %2&#xa0;min</translation>
    </message>
    <message>
        <source>now</source>
        <comment>in a small icon</comment>
        <translation>jetzt</translation>
    </message>
    <message>
        <source>%1m</source>
        <comment>in a small icon</comment>
        <translation>%1m</translation>
    </message>
    <message>
        <source>%1h</source>
        <comment>in a small icon</comment>
        <translation>%1h</translation>
    </message>
</context>
<context>
    <name>FirstMeetingStep</name>
    <message>
        <source>Here&apos;s your next meeting</source>
        <translation>Das ist Ihre nächste Besprechung</translation>
    </message>
    <message>
        <source>No meetings today</source>
        <translation>Heute keine Besprechungen</translation>
    </message>
    <message>
        <source>You&apos;re all set. The countdown appears in the menu bar as soon as something is on your calendar.</source>
        <translation>Alles ist eingerichtet. Der Countdown erscheint in der Systemleiste, sobald etwas in Ihrem Kalender steht.</translation>
    </message>
    <message>
        <source>The countdown is in your menu bar from now on.</source>
        <translation>Der Countdown steht ab jetzt in der Systemleiste.</translation>
    </message>
    <message>
        <source>A minute before it starts, the Join panel appears. Change the lead time in Settings.</source>
        <translation>Eine Minute vor Beginn erscheint das Teilnahmefenster. Die Vorlaufzeit ändern Sie in den Einstellungen.</translation>
    </message>
    <message>
        <source>A minute before each meeting, the Join panel appears. Change the lead time in Settings.</source>
        <translation>Eine Minute vor jeder Besprechung erscheint das Teilnahmefenster. Die Vorlaufzeit ändern Sie in den Einstellungen.</translation>
    </message>
</context>
<context>
    <name>GeneralPage</name>
    <message>
        <source>Menu bar</source>
        <translation>Systemleiste</translation>
    </message>
    <message>
        <source>Show the next meeting in the menu bar</source>
        <translation>Nächste Besprechung in der Systemleiste zeigen</translation>
    </message>
    <message>
        <source>Off: only the icon, the menu still lists your meetings.</source>
        <translation>Aus: nur das Symbol; das Menü führt Ihre Besprechungen weiterhin auf.</translation>
    </message>
    <message>
        <source>Title length</source>
        <translation>Titellänge</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Beim Anmelden starten</translation>
    </message>
    <message>
        <source>Start Mivora quietly when you log in.</source>
        <translation>Startet Mivora im Hintergrund, wenn Sie sich anmelden.</translation>
    </message>
    <message>
        <source>Before a meeting</source>
        <translation>Vor einer Besprechung</translation>
    </message>
    <message>
        <source>Show the Join panel</source>
        <translation>Teilnahmefenster zeigen</translation>
    </message>
    <message>
        <source>Panel position</source>
        <translation>Position des Fensters</translation>
    </message>
    <message>
        <source>Also remind me for meetings without a link</source>
        <translation>Auch an Besprechungen ohne Link erinnern</translation>
    </message>
    <message>
        <source>In-person meetings and calls show the panel too, without a Join button.</source>
        <translation>Das Fenster erscheint auch bei Treffen vor Ort und Anrufen, dann ohne die Schaltfläche „Teilnehmen“.</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Join the next meeting with a shortcut</source>
        <translation>Per Tastenkürzel an der nächsten Besprechung teilnehmen</translation>
    </message>
    <message>
        <source>Works from any app.</source>
        <translation>Funktioniert in jeder App.</translation>
    </message>
    <message>
        <source>When it starts</source>
        <translation>Zu Beginn</translation>
    </message>
    <message numerus="yes">
        <source>%n minute(s) before</source>
        <translation>
            <numerusform>%n Minute vorher</numerusform>
            <numerusform>%n Minuten vorher</numerusform>
        </translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Oben links</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Unten rechts</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Unten links</translation>
    </message>
    <message numerus="yes">
        <source>%n character(s)</source>
        <translation>
            <numerusform>%n Zeichen</numerusform>
            <numerusform>%n Zeichen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is already in use. Choose a different shortcut.</source>
        <translation>%1 wird bereits verwendet. Wählen Sie ein anderes Tastenkürzel.</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Your desktop has set no keys for it. Choose them in its settings.</source>
        <translation>Ihr Desktop hat ihm keine Tasten gegeben. Wählen Sie diese in dessen Einstellungen.</translation>
    </message>
    <message>
        <source>Waiting for your desktop, which may be asking you.</source>
        <translation>Wartet auf Ihren Desktop, der Sie vielleicht gerade fragt.</translation>
    </message>
    <message>
        <source>You declined it. Switch it on to be asked again.</source>
        <translation>Sie haben es abgelehnt. Schalten Sie es ein, um erneut gefragt zu werden.</translation>
    </message>
    <message>
        <source>Your desktop refused it. Switch it off and on to try again.</source>
        <translation>Ihr Desktop hat es abgelehnt. Schalten Sie es aus und wieder ein, um es erneut zu versuchen.</translation>
    </message>
    <message>
        <source>Your desktop has ended it. Switch it off and on to try again.</source>
        <translation>Ihr Desktop hat es beendet. Schalten Sie es aus und wieder ein, um es erneut zu versuchen.</translation>
    </message>
    <message>
        <source>Bind this command to a key in the settings of your desktop:</source>
        <translation>Legen Sie diesen Befehl in den Einstellungen Ihres Desktops auf eine Taste:</translation>
    </message>
    <message>
        <source>Add this line to %1:</source>
        <translation>Fügen Sie diese Zeile in %1 ein:</translation>
    </message>
    <message>
        <source>Change the keys in the settings of your desktop.</source>
        <translation>Die Tasten ändern Sie in den Einstellungen Ihres Desktops.</translation>
    </message>
    <message>
        <source>Change…</source>
        <translation>Ändern&#xa0;…</translation>
    </message>
    <message>
        <source>Hide titles during Do Not Disturb</source>
        <translation>Titel bei „Nicht stören“ ausblenden</translation>
    </message>
    <message>
        <source>Where the desktop tells of it, as Plasma does; screen sharing included.</source>
        <translation>Wo der Desktop es mitteilt, wie Plasma; auch bei geteiltem Bildschirm.</translation>
    </message>
</context>
<context>
    <name>HotKeyRecorder</name>
    <message>
        <source>Press a shortcut…</source>
        <translation>Drücken Sie ein Tastenkürzel&#xa0;…</translation>
    </message>
</context>
<context>
    <name>JoinPanel</name>
    <message>
        <source>Starts in %1</source>
        <translation>Beginnt in %1</translation>
    </message>
    <message>
        <source>Started %1m ago</source>
        <translation>Vor %1&#xa0;min begonnen</translation>
    </message>
    <message>
        <source>Starting now</source>
        <translation>Beginnt jetzt</translation>
    </message>
</context>
<context>
    <name>JoinPanelView</name>
    <message>
        <source>Join</source>
        <translation>Teilnehmen</translation>
    </message>
    <message>
        <source>Snooze 1 min</source>
        <translation>1&#xa0;min später</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ausblenden</translation>
    </message>
</context>
<context>
    <name>KeyboardLayout</name>
    <message>
        <source>Space</source>
        <comment>the key</comment>
        <translation>Leertaste</translation>
    </message>
</context>
<context>
    <name>LeaveOutSection</name>
    <message>
        <source>Leave out</source>
        <translation>Auslassen</translation>
    </message>
    <message>
        <source>Invitations that you haven&apos;t accepted</source>
        <translation>Einladungen ohne Ihre Zusage</translation>
    </message>
    <message>
        <source>Those without your answer, and those that you answered with “maybe”.</source>
        <translation>Ohne Antwort oder nur mit Vorbehalt beantwortet.</translation>
    </message>
    <message>
        <source>Events in which nobody else takes part</source>
        <translation>Termine, an denen sonst niemand teilnimmt</translation>
    </message>
    <message>
        <source>Meetings with the title</source>
        <translation>Besprechungen mit dem Titel</translation>
    </message>
    <message>
        <source>* stands for any text, ? for one character.</source>
        <translation>* steht für beliebigen Text, ? für ein Zeichen.</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>Meeting</name>
    <message>
        <source>Meeting</source>
        <comment>in the place of a title that is hidden</comment>
        <translation>Besprechung</translation>
    </message>
</context>
<context>
    <name>MenuBarMock</name>
    <message>
        <source>The countdown in the menu bar, and the Join panel under it</source>
        <translation>Der Countdown in der Systemleiste und darunter das Teilnahmefenster</translation>
    </message>
    <message>
        <source>Design review · 2m</source>
        <translation>Entwurfsbesprechung · 2&#xa0;min</translation>
    </message>
    <message>
        <source>Design review</source>
        <translation>Entwurfsbesprechung</translation>
    </message>
    <message>
        <source>Starts in 2m · Zoom</source>
        <translation>Beginnt in 2&#xa0;min · Zoom</translation>
    </message>
    <message>
        <source>Join</source>
        <translation>Teilnehmen</translation>
    </message>
    <message>
        <source>Snooze 1 min</source>
        <translation>1&#xa0;min später</translation>
    </message>
</context>
<context>
    <name>Onboarding</name>
    <message>
        <source>Welcome to Mivora</source>
        <translation>Willkommen bei Mivora</translation>
    </message>
    <message>
        <source>Start Using Mivora</source>
        <translation>Mit Mivora beginnen</translation>
    </message>
</context>
<context>
    <name>OnboardingView</name>
    <message>
        <source>Skip for now</source>
        <translation>Vorerst überspringen</translation>
    </message>
</context>
<context>
    <name>PageDots</name>
    <message>
        <source>Step %1 of %2</source>
        <translation>Schritt %1 von %2</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
    <message>
        <source>Meta</source>
        <translation>Meta</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Rücktaste</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>Einfg</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Pos1</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Bild auf</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Bild ab</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Hoch</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Runter</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Num Lock</source>
        <translation>Num</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <translation>Lauter</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <translation>Leiser</translation>
    </message>
    <message>
        <source>Volume Mute</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Power Off</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>Num %1</source>
        <translation>Num %1</translation>
    </message>
</context>
<context>
    <name>Service</name>
    <message>
        <source>Link</source>
        <comment>a meeting&apos;s link to a service without a name</comment>
        <translation>Link</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Calendars</source>
        <translation>Kalender</translation>
    </message>
</context>
<context>
    <name>SettingsSidebar</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Mivora needs Calendar access</source>
        <translation>Mivora braucht Zugriff auf den Kalender</translation>
    </message>
    <message>
        <source>GNOME shows no icon before you install the extension AppIndicator (gnome-shell-extension-appindicator) and turn it on in the app Extensions; until then, “mivora show” shows your day.</source>
        <translation>GNOME zeigt kein Symbol, bevor Sie die Erweiterung AppIndicator (gnome-shell-extension-appindicator) installieren und in der App Erweiterungen einschalten; bis dahin zeigt „mivora show“ Ihren Tag.</translation>
    </message>
    <message>
        <source>This desktop has no tray for the icon: add one to a panel; until then, “mivora show” shows your day.</source>
        <translation>Dieser Desktop hat keine Systemleiste für das Symbol: Fügen Sie eine hinzu; bis dahin zeigt „mivora show“ Ihren Tag.</translation>
    </message>
    <message>
        <source>Mivora found no calendar</source>
        <translation>Mivora hat keinen Kalender gefunden</translation>
    </message>
</context>
<context>
    <name>StatusMenu</name>
    <message>
        <source>now</source>
        <comment>of a meeting that is running</comment>
        <translation>läuft</translation>
    </message>
    <message>
        <source>No more meetings today</source>
        <translation>Heute keine weiteren Besprechungen</translation>
    </message>
    <message>
        <source>Tomorrow</source>
        <translation>Morgen</translation>
    </message>
    <message>
        <source>Allow Calendar access…</source>
        <translation>Kalenderzugriff erlauben&#xa0;…</translation>
    </message>
    <message>
        <source>Calendar access needed…</source>
        <translation>Kalenderzugriff erforderlich&#xa0;…</translation>
    </message>
    <message>
        <source>No calendars selected — open Settings…</source>
        <translation>Keine Kalender ausgewählt – Einstellungen öffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Join Next Meeting</source>
        <translation>An der nächsten Besprechung teilnehmen</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen&#xa0;…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Aktualisierungen suchen&#xa0;…</translation>
    </message>
    <message>
        <source>More Kelo apps…</source>
        <translation>Weitere Apps von Kelo&#xa0;…</translation>
    </message>
    <message>
        <source>Quit Mivora</source>
        <translation>Mivora beenden</translation>
    </message>
    <message>
        <source>No calendar found…</source>
        <translation>Kein Kalender gefunden&#xa0;…</translation>
    </message>
</context>
<context>
    <name>Subscription</name>
    <message>
        <source>This is not the address of a calendar. It begins with https:// or webcal://.</source>
        <translation>Das ist nicht die Adresse eines Kalenders. Sie beginnt mit https:// oder webcal://.</translation>
    </message>
    <message>
        <source>Subscribing needs Evolution Data Server, the desktop&apos;s calendar store: install the package evolution-data-server. A folder of iCalendar files, ~/.calendars, does without.</source>
        <translation>Zum Abonnieren wird Evolution Data Server gebraucht, der Kalenderspeicher des Desktops: Installieren Sie das Paket evolution-data-server. Ein Ordner mit iCalendar-Dateien, ~/.calendars, kommt ohne ihn aus.</translation>
    </message>
    <message>
        <source>The desktop&apos;s calendar store, Evolution Data Server, does not answer. Try again later.</source>
        <translation>Der Kalenderspeicher des Desktops, Evolution Data Server, antwortet nicht. Versuchen Sie es später noch einmal.</translation>
    </message>
    <message>
        <source>Mivora has not subscribed to this calendar, or no longer.</source>
        <translation>Mivora hat diesen Kalender nicht abonniert oder nicht mehr.</translation>
    </message>
    <message>
        <source>%1 has no calendar at this address.</source>
        <translation>Unter dieser Adresse hat %1 keinen Kalender.</translation>
    </message>
    <message>
        <source>%1 asks for a password. A calendar&apos;s private address needs none.</source>
        <translation>%1 verlangt ein Passwort. Die private Adresse eines Kalenders braucht keines.</translation>
    </message>
    <message>
        <source>What %1 has at this address is not a calendar, or a broken one. The address in iCalendar format is needed.</source>
        <translation>Unter dieser Adresse liefert %1 keinen oder nur einen beschädigten Kalender. Gebraucht wird die Adresse im iCalendar-Format.</translation>
    </message>
    <message>
        <source>The certificate of %1 is not valid: somebody else may pretend to be it.</source>
        <translation>Das Zertifikat von %1 ist nicht gültig: Jemand anderes könnte sich dafür ausgeben.</translation>
    </message>
    <message>
        <source>%1 can&apos;t be reached. Check the address and the network.</source>
        <translation>%1 ist nicht zu erreichen. Prüfen Sie die Adresse und das Netzwerk.</translation>
    </message>
    <message>
        <source>%1 takes too long to answer. Try again later.</source>
        <translation>%1 braucht zu lange für eine Antwort. Versuchen Sie es später noch einmal.</translation>
    </message>
    <message>
        <source>%1 does not hand out the calendar now. Try again later.</source>
        <translation>%1 gibt den Kalender gerade nicht heraus. Versuchen Sie es später noch einmal.</translation>
    </message>
    <message>
        <source>This is a large calendar, and is still being read.</source>
        <translation>Das ist ein großer Kalender; er wird noch gelesen.</translation>
    </message>
    <message>
        <source>No meetings this week</source>
        <translation>Keine Besprechungen in dieser Woche</translation>
    </message>
    <message numerus="yes">
        <source>%n meeting(s) this week</source>
        <translation>
            <numerusform>%n Besprechung in dieser Woche</numerusform>
            <numerusform>%n Besprechungen in dieser Woche</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SubscriptionView</name>
    <message>
        <source>Address of the calendar</source>
        <translation>Adresse des Kalenders</translation>
    </message>
    <message>
        <source>Name of the calendar</source>
        <translation>Name des Kalenders</translation>
    </message>
    <message>
        <source>The calendar is being fetched</source>
        <translation>Der Kalender wird abgerufen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Subscribe</source>
        <translation>Abonnieren</translation>
    </message>
</context>
<context>
    <name>Updates</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>No update feed configured</source>
        <translation>Keine Aktualisierungsquelle eingerichtet</translation>
    </message>
    <message>
        <source>This build of %1 has no update feed configured, so it can&apos;t look for new versions itself. Get them from where you got this one.</source>
        <translation>In dieser Ausgabe von %1 ist keine Aktualisierungsquelle eingerichtet, daher kann sie nicht selbst nach neuen Versionen suchen. Beziehen Sie diese von dort, woher Sie die jetzige haben.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Nach Aktualisierungen wird gesucht&#xa0;…</translation>
    </message>
    <message>
        <source>You&apos;re up to date</source>
        <translation>Alles ist auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>%1 %2 is the newest version.</source>
        <translation>%1 %2 ist die neueste Version.</translation>
    </message>
    <message>
        <source>A new version of %1 is available</source>
        <translation>Eine neue Version von %1 ist verfügbar</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>A part of %1 is missing. Install %1 again.</source>
        <translation>Ein Teil von %1 fehlt. Installieren Sie %1 neu.</translation>
    </message>
    <message>
        <source>This build of %1 has no valid key to verify updates with. Get new versions from where you got this one.</source>
        <translation>Diese Ausgabe von %1 hat keinen gültigen Schlüssel, um Aktualisierungen zu prüfen. Beziehen Sie neue Versionen von dort, woher Sie diese haben.</translation>
    </message>
    <message>
        <source>The update server can&apos;t be reached. Check your internet connection, then try again.</source>
        <translation>Der Aktualisierungsserver ist nicht erreichbar. Prüfen Sie Ihre Internetverbindung und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>The update server answered with an error. Try again later.</source>
        <translation>Der Aktualisierungsserver hat mit einem Fehler geantwortet. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>The update server couldn&apos;t prove that it is genuine. Check the date of your computer, or try again on another network.</source>
        <translation>Der Aktualisierungsserver konnte seine Echtheit nicht nachweisen. Prüfen Sie das Datum Ihres Computers oder versuchen Sie es in einem anderen Netzwerk erneut.</translation>
    </message>
    <message>
        <source>The list of versions can&apos;t be read. Try again later.</source>
        <translation>Die Liste der Versionen ist nicht lesbar. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>Couldn&apos;t check for updates</source>
        <translation>Suche nach Aktualisierungen fehlgeschlagen</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>%1 %2 was released on %3. You have %4.</source>
        <translation>%1 %2 ist am %3 erschienen. Sie haben %4.</translation>
    </message>
    <message>
        <source>Download…</source>
        <translation>Herunterladen&#xa0;…</translation>
    </message>
    <message>
        <source>What the update server says is not signed by the makers of %1. Try again later; if it happens again, tell them.</source>
        <translation>Was der Aktualisierungsserver meldet, ist nicht von den Herstellern von %1 signiert. Versuchen Sie es später erneut; geschieht es wieder, teilen Sie es ihnen mit.</translation>
    </message>
</context>
<context>
    <name>WelcomeStep</name>
    <message>
        <source>Your next meeting, one click away.</source>
        <translation>Ein Klick zur nächsten Besprechung.</translation>
    </message>
    <message>
        <source>The countdown lives in your menu bar. A minute before, a small panel offers Join, Snooze or Dismiss.</source>
        <translation>Der Countdown steht in der Systemleiste. Eine Minute vorher erscheint ein kleines Fenster: Teilnehmen, 1&#xa0;min später, Ausblenden.</translation>
    </message>
</context>
<context>
    <name>kelo::HotKeyRecorder</name>
    <message>
        <source>Press Esc to cancel</source>
        <translation>Mit Esc brechen Sie ab</translation>
    </message>
    <message>
        <source>Click to record a new shortcut</source>
        <translation>Klicken Sie, um ein neues Tastenkürzel aufzunehmen</translation>
    </message>
    <message>
        <source>Reset to %1</source>
        <translation>Auf %1 zurücksetzen</translation>
    </message>
</context>
<context>
    <name>kelo::OnboardingModel</name>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
</context>
<context>
    <name>mivora::AppDelegate</name>
    <message>
        <source>there is no meeting to join now</source>
        <translation>derzeit gibt es keine Besprechung zum Teilnehmen</translation>
    </message>
    <message>
        <source>your desktop&apos;s clipboard takes text only from the program with the keyboard; install wl-clipboard</source>
        <translation>die Zwischenablage dieses Desktops nimmt Text nur von dem Programm an, das die Tastatur hat; installieren Sie wl-clipboard</translation>
    </message>
    <message>
        <source>there is no meeting with a link now</source>
        <translation>derzeit gibt es keine Besprechung mit Link</translation>
    </message>
    <message>
        <source>Mivora knows no action &quot;%1&quot;</source>
        <translation>Mivora kennt keine Aktion „%1“</translation>
    </message>
    <message>
        <source>the settings have no page &quot;%1&quot;</source>
        <translation>die Einstellungen haben keine Seite „%1“</translation>
    </message>
    <message>
        <source>the settings can&apos;t be shown</source>
        <translation>die Einstellungen können nicht angezeigt werden</translation>
    </message>
    <message>
        <source>no meeting has its panel shown now</source>
        <translation>derzeit wird kein Teilnahmefenster gezeigt</translation>
    </message>
    <message>
        <source>Settings can&apos;t be saved: %1</source>
        <translation>Einstellungen können nicht gespeichert werden: %1</translation>
    </message>
    <message>
        <source>your calendars are still being read; try again in a moment</source>
        <translation>Ihre Kalender werden noch gelesen; versuchen Sie es gleich noch einmal</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>the day can&apos;t be shown</source>
        <translation>der Tag kann nicht angezeigt werden</translation>
    </message>
    <message>
        <source>title: expected hide, show or toggle, got &quot;%1&quot;</source>
        <translation>title: erwartet wird hide, show oder toggle, angegeben ist „%1“</translation>
    </message>
    <message>
        <source>titles stay hidden while your desktop holds notifications back; `mivora defaults write hideTitleWhileInhibited false` shows them</source>
        <translation>Titel bleiben ausgeblendet, solange Ihr Desktop Benachrichtigungen zurückhält; `mivora defaults write hideTitleWhileInhibited false` zeigt sie</translation>
    </message>
</context>
<context>
    <name>mivora::CalendarListModel</name>
    <message>
        <source>Calendars</source>
        <translation>Kalender</translation>
    </message>
</context>
<context>
    <name>mivora::CalendarWays</name>
    <message>
        <source>Online accounts</source>
        <translation>Online-Konten</translation>
    </message>
    <message>
        <source>The calendars of Google, Microsoft 365, Nextcloud and others appear here.</source>
        <translation>Die Kalender von Google, Microsoft 365, Nextcloud und anderen erscheinen dann hier.</translation>
    </message>
    <message>
        <source>Open Online Accounts…</source>
        <translation>Online-Konten öffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Evolution</source>
        <translation>Evolution</translation>
    </message>
    <message>
        <source>It also knows Exchange, CalDAV, and calendars on this computer.</source>
        <translation>Kennt auch Exchange, CalDAV und Kalender auf diesem Computer.</translation>
    </message>
    <message>
        <source>Open Evolution…</source>
        <translation>Evolution öffnen&#xa0;…</translation>
    </message>
    <message>
        <source>The calendar&apos;s address</source>
        <translation>Die Adresse des Kalenders</translation>
    </message>
    <message>
        <source>Nearly every calendar service has a private address for each calendar.</source>
        <translation>Fast jeder Kalenderdienst hat für jeden Kalender eine private Adresse.</translation>
    </message>
    <message>
        <source>Subscribe to a calendar…</source>
        <translation>Kalender abonnieren&#xa0;…</translation>
    </message>
    <message>
        <source>A folder of files</source>
        <translation>Ein Ordner mit Dateien</translation>
    </message>
    <message>
        <source>iCalendar files (.ics) in ~/.calendars are read at once, also those that another program keeps in step with a server.</source>
        <translation>iCalendar-Dateien (.ics) in ~/.calendars werden sofort gelesen, auch solche, die ein anderes Programm mit einem Server abgleicht.</translation>
    </message>
</context>
<context>
    <name>mivora::ConflictAlert</name>
    <message>
        <source>%1 is already in use</source>
        <translation>%1 wird bereits verwendet</translation>
    </message>
    <message>
        <source>Another app uses this shortcut. Choose a different one in Settings.</source>
        <translation>Eine andere App verwendet dieses Tastenkürzel. Wählen Sie in den Einstellungen ein anderes.</translation>
    </message>
</context>
<context>
    <name>mivora::FirstMeetingModel</name>
    <message>
        <source>%1 · no link</source>
        <translation>%1 · kein Link</translation>
    </message>
</context>
<context>
    <name>mivora::JoinNotification</name>
    <message>
        <source>Join</source>
        <translation>Teilnehmen</translation>
    </message>
    <message>
        <source>Snooze 1 min</source>
        <translation>1&#xa0;min später</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ausblenden</translation>
    </message>
</context>
<context>
    <name>mivora::MeetingCommands</name>
    <message>
        <source>Couldn&apos;t open %1. Link copied.</source>
        <translation>%1 ließ sich nicht öffnen. Link kopiert.</translation>
    </message>
</context>
<context>
    <name>mivora::PortalLoginItem</name>
    <message>
        <source>Mivora counts down to your next meeting from the moment you log in.</source>
        <translation>Mivora zeigt ab der Anmeldung den Countdown bis zu Ihrer nächsten Besprechung.</translation>
    </message>
</context>
<context>
    <name>mivora::SubscriptionDialog</name>
    <message>
        <source>From %1</source>
        <translation>Von %1</translation>
    </message>
    <message>
        <source>Paste the private address of the calendar, in iCalendar format. Your calendar service shows it in the calendar&apos;s settings. Your desktop&apos;s calendar store keeps it, and fetches the calendar every 15 minutes.</source>
        <translation>Fügen Sie die private Adresse des Kalenders im iCalendar-Format ein. Ihr Kalenderdienst zeigt sie in den Einstellungen des Kalenders. Der Kalenderspeicher Ihres Desktops behält sie und ruft den Kalender alle 15 Minuten ab.</translation>
    </message>
    <message>
        <source>A link offers you a calendar of %1. Your desktop&apos;s calendar store would fetch it from there every 15 minutes.</source>
        <translation>Ein Link bietet Ihnen einen Kalender von %1 an. Der Kalenderspeicher Ihres Desktops würde ihn von dort alle 15 Minuten abrufen.</translation>
    </message>
    <message>
        <source>Subscribe to a calendar</source>
        <translation>Einen Kalender abonnieren</translation>
    </message>
</context>
</TS>
