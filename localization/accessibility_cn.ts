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
<context>
    <name>Recording</name>
    <message>
        <source>%1 could not be read or written.</source>
        <translation>无法读取或写入 %1。</translation>
    </message>
    <message>
        <source>%1 does not exist.</source>
        <translation>%1 不存在。</translation>
    </message>
    <message>
        <source>%1 exists already. It was not changed.</source>
        <translation>%1 已存在，未作更改。</translation>
    </message>
    <message>
        <source>%1 is being recorded by another program.</source>
        <translation>另一个程序正在录制到 %1。</translation>
    </message>
    <message>
        <source>%1 is damaged or incomplete.</source>
        <translation>%1 已损坏或不完整。</translation>
    </message>
    <message>
        <source>%1 is not a recording.</source>
        <translation>%1 不是录制文件。</translation>
    </message>
    <message>
        <source>%1 is on a medium that cannot be written.</source>
        <translation>%1 所在的介质不可写。</translation>
    </message>
    <message>
        <source>%1 was made by a newer version of this program.</source>
        <translation>%1 由本程序的更新版本创建。</translation>
    </message>
    <message>
        <source>Between two recordings</source>
        <translation>两次录制之间</translation>
    </message>
    <message>
        <source>Computer asleep</source>
        <translation>计算机休眠</translation>
    </message>
    <message>
        <source>Disk too slow or full</source>
        <translation>磁盘过慢或已满</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>已中断</translation>
    </message>
    <message>
        <source>Merged from several recordings</source>
        <translation>由多个录制合并</translation>
    </message>
    <message>
        <source>No data from the instrument</source>
        <translation>仪器没有数据</translation>
    </message>
    <message>
        <source>No instrument connected</source>
        <translation>未连接仪器</translation>
    </message>
    <message>
        <source>Recording interrupted</source>
        <translation>录制中断</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>正在录制</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>已停止</translation>
    </message>
    <message>
        <source>The condition came true</source>
        <translation>已满足条件</translation>
    </message>
    <message>
        <source>The disk was almost full</source>
        <translation>磁盘空间几乎用尽</translation>
    </message>
    <message>
        <source>The file could not be written</source>
        <translation>无法写入文件</translation>
    </message>
    <message>
        <source>There is not enough space on the disk for %1.</source>
        <translation>磁盘空间不足，无法写入 %1。</translation>
    </message>
    <message>
        <source>Unplugged</source>
        <translation>已拔出</translation>
    </message>
    <message>
        <source>You do not have permission to use %1.</source>
        <translation>您没有使用 %1 的权限。</translation>
    </message>
</context>
</TS>
