<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="C" sourcelanguage="en">
<context>
    <name>ToolsManager</name>
    <message>
        <source> Multimeter Gauge</source>
        <translation></translation>
    </message>
    <message>
        <source>DataBase Show</source>
        <translation></translation>
    </message>
    <message>
        <source>Power Analysis</source>
        <translation></translation>
    </message>
    <message>
        <source>System Settings</source>
        <translation></translation>
    </message>
    <message>
        <source>User Settings</source>
        <translation></translation>
    </message>
</context>
</TS>
