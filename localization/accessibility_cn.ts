<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- What assistive technology reads, tool tips, messages about faults and recordings say, beside the texts of gen_cn.ts. -->
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
    <name>RecordButton</name>
    <message>
        <source>Record</source>
        <translation>录制</translation>
    </message>
    <message>
        <source>Record (Ctrl+R)</source>
        <translation>录制 (Ctrl+R)</translation>
    </message>
    <message>
        <source>Stop recording</source>
        <translation>停止录制</translation>
    </message>
    <message>
        <source>Stop recording (Ctrl+R)</source>
        <translation>停止录制 (Ctrl+R)</translation>
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
<context>
    <name>RecordingControl</name>
    <message>
        <source>%1 was not finished because the program ended. Nothing that was written is lost.</source>
        <translation>程序已退出，%1 没有完成。已写入的数据没有丢失。</translation>
    </message>
    <message>
        <source>%1, rows: %2, %3, %4</source>
        <translation>%1，行数：%2，%3，%4</translation>
    </message>
    <message>
        <source>A recording was interrupted</source>
        <translation>有一次录制被中断</translation>
    </message>
    <message>
        <source>Main: %1, %2</source>
        <translation>主路：%1，%2</translation>
    </message>
    <message>
        <source>Recording saved</source>
        <translation>录制已保存</translation>
    </message>
    <message>
        <source>Rows: %1</source>
        <translation>行数：%1</translation>
    </message>
    <message>
        <source>The disk is almost full, so the recording has ended. It is complete up to that moment.</source>
        <translation>磁盘几乎已满，录制已结束。到那一刻为止的数据是完整的。</translation>
    </message>
    <message>
        <source>The recording could not be finished</source>
        <translation>录制无法完成</translation>
    </message>
    <message>
        <source>The recording could not be started</source>
        <translation>录制无法开始</translation>
    </message>
    <message>
        <source>The report could not be shown</source>
        <translation>无法显示报告</translation>
    </message>
    <message>
        <source>There is no program to show it. It is in %1.</source>
        <translation>没有可用来显示报告的程序。报告在 %1。</translation>
    </message>
    <message>
        <source>Type-C: %1, %2</source>
        <translation>Type-C：%1，%2</translation>
    </message>
    <message>
        <source>Waiting for the instrument. The recording goes on.</source>
        <translation>正在等待仪器，录制继续进行。</translation>
    </message>
    <message>
        <source>What was recorded is in the file. The next start of the program offers to finish it.</source>
        <translation>已录制的数据都在文件中。程序下次启动时可以完成它。</translation>
    </message>
</context>
<context>
    <name>RecordingNotice</name>
    <message>
        <source>Close this notice</source>
        <translation>关闭此通知</translation>
    </message>
    <message>
        <source>Finish it</source>
        <translation>完成录制</translation>
    </message>
    <message>
        <source>Leave it as it is</source>
        <translation>保持原样</translation>
    </message>
    <message>
        <source>Show in folder</source>
        <translation>在文件夹中显示</translation>
    </message>
    <message>
        <source>Show report</source>
        <translation>显示报告</translation>
    </message>
</context>
<context>
    <name>RecordingReport</name>
    <message>
        <source>%1, recorded by %2. Charge and energy are integrated over the measurements, without the gaps.</source>
        <translation>%1，由 %2 录制。电荷量和能量由测量值积分得出，不含间断。</translation>
    </message>
    <message>
        <source>%1, together %2</source>
        <translation>%1 处，共 %2</translation>
    </message>
    <message>
        <source>A point stands for %1 s: the line is the mean, the band reaches from the minimum to the maximum.</source>
        <translation>每个点代表 %1 s：曲线为平均值，色带为最小值到最大值。</translation>
    </message>
    <message>
        <source>Charge</source>
        <translation>电荷量</translation>
    </message>
    <message>
        <source>Current</source>
        <translation>电流</translation>
    </message>
    <message>
        <source>Drag across a chart to zoom in. Hold Shift and drag to move. Double-click to show everything.</source>
        <translation>在图上拖动可放大，按住 Shift 拖动可平移，双击显示全部。</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>时长</translation>
    </message>
    <message>
        <source>End</source>
        <translation>结束</translation>
    </message>
    <message>
        <source>End of the recording</source>
        <translation>录制结束</translation>
    </message>
    <message>
        <source>Ended by</source>
        <translation>结束原因</translation>
    </message>
    <message>
        <source>Energy</source>
        <translation>能量</translation>
    </message>
    <message>
        <source>Every measurement is a point.</source>
        <translation>每次测量为一个点。</translation>
    </message>
    <message>
        <source>From</source>
        <translation>从</translation>
    </message>
    <message>
        <source>Gap</source>
        <translation>间断</translation>
    </message>
    <message>
        <source>Gaps</source>
        <translation>间断</translation>
    </message>
    <message>
        <source>Instrument's counter</source>
        <translation>仪器计数</translation>
    </message>
    <message>
        <source>Main</source>
        <translation>主路</translation>
    </message>
    <message>
        <source>Marks</source>
        <translation>标记</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>最大值</translation>
    </message>
    <message>
        <source>Mean</source>
        <translation>平均值</translation>
    </message>
    <message>
        <source>Measurements</source>
        <translation>测量次数</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>最小值</translation>
    </message>
    <message>
        <source>Multimeter</source>
        <translation>万用表</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Power</source>
        <translation>功率</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>读数</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>原因</translation>
    </message>
    <message>
        <source>Recording of %1</source>
        <translation>录制 %1</translation>
    </message>
    <message>
        <source>Show everything</source>
        <translation>显示全部</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>Still running, or interrupted</source>
        <translation>仍在录制或已中断</translation>
    </message>
    <message>
        <source>Stored every</source>
        <translation>存储间隔</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>The charge differs from the instrument's own counter by %1 %.</source>
        <translation>电荷量与仪器自身的计数相差 %1 %。</translation>
    </message>
    <message>
        <source>The first %1 of %2 are shown.</source>
        <translation>显示 %2 项中的前 %1 项。</translation>
    </message>
    <message>
        <source>The instrument did not say its name.</source>
        <translation>仪器没有报告名称。</translation>
    </message>
    <message>
        <source>The recording has no measurements.</source>
        <translation>录制中没有测量数据。</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>To</source>
        <translation>到</translation>
    </message>
    <message>
        <source>Type-C</source>
        <translation>Type-C</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>电压</translation>
    </message>
</context>
</TS>
