<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- What assistive technology reads and tool tips say, beside the texts of gen_cn.ts. -->
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>GenTextField</name>
    <message>
        <source>Clear text</source>
        <translation>清除文字</translation>
    </message>
    <message>
        <source>Hide password</source>
        <translation>隐藏密码</translation>
    </message>
    <message>
        <source>Show password</source>
        <translation>显示密码</translation>
    </message>
</context>
<context>
    <name>GenTitleBar</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>最大化</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>还原</translation>
    </message>
</context>
<context>
    <name>LeftColumn</name>
    <message>
        <source>Collapse the page list</source>
        <translation>收起页面列表</translation>
    </message>
    <message>
        <source>Expand the page list</source>
        <translation>展开页面列表</translation>
    </message>
</context>
</TS>
