<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- What assistive technology reads, tool tips and messages about faults say, beside the texts of gen_cn.ts. -->
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
<context>
    <name>QObject</name>
    <message>
        <source>A part of Quorvel cannot be shown because it is missing or damaged. Please install Quorvel again.</source>
        <translation>Quorvel 的某个部分缺失或已损坏，无法显示。请重新安装 Quorvel。</translation>
    </message>
    <message>
        <source>Please check that the folder exists, has free space and may be written. Readings are not affected.</source>
        <translation>请检查该文件夹是否存在、是否有剩余空间以及是否可写。测量不受影响。</translation>
    </message>
    <message>
        <source>Quorvel cannot start because it cannot open its local socket.</source>
        <translation>Quorvel 无法启动，因为无法打开本地套接字。</translation>
    </message>
    <message>
        <source>Quorvel could not be started again. Please start it yourself.</source>
        <translation>Quorvel 无法重新启动。请手动启动。</translation>
    </message>
    <message>
        <source>Settings cannot be stored in %1.</source>
        <translation>无法将设置保存到 %1。</translation>
    </message>
    <message>
        <source>The window of Quorvel cannot be shown because a part of the program is missing or damaged. Please install Quorvel again.</source>
        <translation>Quorvel 的窗口无法显示，因为程序的某个部分缺失或已损坏。请重新安装 Quorvel。</translation>
    </message>
</context>
</TS>
