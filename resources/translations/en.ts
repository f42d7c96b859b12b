<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>com.blipsy.prefpanel</name>
    <message>
        <source>newabb</source>
        <translation>my new phrase</translation>
    </message>
</context>
</TS>
