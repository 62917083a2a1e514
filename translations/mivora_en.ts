<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AccountsHint</name>
    <message>
        <source>Internet Accounts</source>
        <translation>Online Accounts</translation>
    </message>
</context>
<context>
    <name>CalendarList</name>
    <message>
        <source>Google or Outlook calendar missing? Add the account under System Settings → Internet Accounts and it appears here.</source>
        <translation>Google or Outlook calendar missing? Add the account in Online Accounts and it appears here.</translation>
    </message>
</context>
<context>
    <name>CalendarStep</name>
    <message>
        <source>Mivora needs Full Access to see your meetings and their Join links. It reads them on this Mac and never stores or uploads anything.</source>
        <translation>Mivora needs to see your meetings and their Join links. It reads them on this computer and never stores or uploads anything.</translation>
    </message>
    <message>
        <source>Open System Settings</source>
        <translation>Open Settings</translation>
    </message>
    <message>
        <source>Turn on Mivora under Privacy &amp; Security → Calendars, then come back here.</source>
        <translation>Mivora could not read any calendar. Add one, then come back here.</translation>
    </message>
</context>
<context>
    <name>CalendarsPage</name>
    <message>
        <source>Mivora can&apos;t read your calendars until you allow it under Privacy &amp; Security → Calendars.</source>
        <translation>Mivora can&apos;t read your calendars until you allow it.</translation>
    </message>
    <message>
        <source>Open System Settings…</source>
        <translation>Open Settings…</translation>
    </message>
</context>
<context>
    <name>FirstMeetingStep</name>
    <message>
        <source>You&apos;re all set. The countdown appears in the menu bar as soon as something is on your calendar.</source>
        <translation>You&apos;re all set. The countdown appears in the tray as soon as something is on your calendar.</translation>
    </message>
    <message>
        <source>The countdown is in your menu bar from now on.</source>
        <translation>The countdown is in your tray from now on.</translation>
    </message>
</context>
<context>
    <name>GeneralPage</name>
    <message>
        <source>Menu bar</source>
        <translation>Tray</translation>
    </message>
    <message>
        <source>Show the next meeting in the menu bar</source>
        <translation>Show the next meeting in the tray</translation>
    </message>
    <message numerus="yes">
        <source>%n minute(s) before</source>
        <translation>
            <numerusform>%n minute before</numerusform>
            <numerusform>%n minutes before</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n character(s)</source>
        <translation>
            <numerusform>%n character</numerusform>
            <numerusform>%n characters</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>MenuBarMock</name>
    <message>
        <source>The countdown in the menu bar, and the Join panel under it</source>
        <translation>The countdown in the tray, and the Join panel under it</translation>
    </message>
</context>
<context>
    <name>WelcomeStep</name>
    <message>
        <source>The countdown lives in your menu bar. A minute before, a small panel offers Join, Snooze or Dismiss.</source>
        <translation>The countdown lives in your tray. A minute before, a small panel offers Join, Snooze or Dismiss.</translation>
    </message>
</context>
<context>
    <name>Subscription</name>
    <message numerus="yes">
        <source>%n meeting(s) this week</source>
        <translation>
            <numerusform>%n meeting this week</numerusform>
            <numerusform>%n meetings this week</numerusform>
        </translation>
    </message>
</context>
</TS>
