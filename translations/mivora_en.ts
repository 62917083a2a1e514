<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>GeneralPage</name>
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
</TS>
