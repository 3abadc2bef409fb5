<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>Quorvel</source>
        <translation>Quorvel</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>An application is already running.</source>
        <translation>应用程序已经在运行。</translation>
    </message>
    <message>
        <source>Quorvel</source>
        <translation>Quorvel</translation>
    </message>
</context>
<context>
    <name>ToolsManager</name>
    <message>
        <source> Multimeter Gauge</source>
        <translation>万用表测量</translation>
    </message>
    <message>
        <source>Charge Data</source>
        <translation>充电数据采集</translation>
    </message>
    <message>
        <source>DataBase Show</source>
        <translation></translation>
    </message>
    <message>
        <source>Pointer Gauge</source>
        <translation>主供电检测</translation>
    </message>
    <message>
        <source>Power Analysis</source>
        <translation>电源波形分析</translation>
    </message>
    <message>
        <source>System Settings</source>
        <translation>系统设置</translation>
    </message>
    <message>
        <source>User Settings</source>
        <translation>用户设置</translation>
    </message>
</context>
<context>
    <name>ToolsIndicators</name>
    <message>
        <source>Version:</source>
        <translation>版本号:</translation>
    </message>
    <message>
        <source>© Quorvel contributors</source>
        <translation>© Quorvel 贡献者</translation>
    </message>
</context>
<context>
    <name>GenTitleBar</name>
    <message>
        <source>Cancel topmost</source>
        <translation>取消置顶</translation>
    </message>
    <message>
        <source>Check update</source>
        <translation>检测更新</translation>
    </message>
    <message>
        <source>Topmost</source>
        <translation>窗口置顶</translation>
    </message>
</context>
<context>
    <name>GenTextButton</name>
    <message>
        <source>Button</source>
        <translation>按钮</translation>
    </message>
</context>
<context>
    <name>PointerGauge</name>
    <message>
        <source>Capacity</source>
        <translation>容量</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Current</source>
        <translation>电流</translation>
    </message>
    <message>
        <source>Not Connected</source>
        <translation>未连接</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>量程档</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>电压</translation>
    </message>
</context>
<context>
    <name>ChargeData</name>
    <message>
        <source>Capacity Counter</source>
        <translation>容量计数</translation>
    </message>
    <message>
        <source>Charge Data Collect</source>
        <translation>充电数据采集</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Current</source>
        <translation>电流</translation>
    </message>
    <message>
        <source>Device Status</source>
        <translation>设备状态</translation>
    </message>
    <message>
        <source>Elapsed Time</source>
        <translation>累计时间</translation>
    </message>
    <message>
        <source>F</source>
        <translation></translation>
    </message>
    <message>
        <source>Fast Charge</source>
        <translation>快充</translation>
    </message>
    <message>
        <source>Not Connected</source>
        <translation>未连接</translation>
    </message>
    <message>
        <source>Power</source>
        <translation>功率</translation>
    </message>
    <message>
        <source>S</source>
        <translation></translation>
    </message>
    <message>
        <source>Signal Lines</source>
        <translation>信号线电压</translation>
    </message>
    <message>
        <source>Slow Charge</source>
        <translation>慢充</translation>
    </message>
    <message>
        <source>TYPE-C input current</source>
        <translation>TYPE-C 输入电流</translation>
    </message>
    <message>
        <source>TYPE-C input power</source>
        <translation>TYPE-C 输入功率</translation>
    </message>
    <message>
        <source>TYPE-C input voltage</source>
        <translation>TYPE-C 输入电压</translation>
    </message>
    <message>
        <source>TYPE-C measurement dashboard</source>
        <translation>TYPE-C 测量仪表板</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>电压</translation>
    </message>
</context>
<context>
    <name>MultimeterGauge</name>
    <message>
        <source>Buzzer</source>
        <translation>蜂鸣档</translation>
    </message>
    <message>
        <source>Buzzer Gear</source>
        <translation>蜂鸣档</translation>
    </message>
    <message>
        <source>Capacitance</source>
        <translation>电容档</translation>
    </message>
    <message>
        <source>Capacitance Gear</source>
        <translation>电容档</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清除</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Date Time</source>
        <translation>时间日期</translation>
    </message>
    <message>
        <source>Delete Item</source>
        <translation>删除此项</translation>
    </message>
    <message>
        <source>Diode</source>
        <translation>二极管档</translation>
    </message>
    <message>
        <source>Diode Gear</source>
        <translation>二极管档</translation>
    </message>
    <message>
        <source>Diode/Buzzer</source>
        <translation>二极管/蜂鸣</translation>
    </message>
    <message>
        <source>Disable</source>
        <translation>禁用</translation>
    </message>
    <message>
        <source>Hide Records</source>
        <translation>隐藏记录</translation>
    </message>
    <message>
        <source>Not Connected</source>
        <translation>未连接</translation>
    </message>
    <message>
        <source>Resistance</source>
        <translation>电阻档</translation>
    </message>
    <message>
        <source>Resistance Gear</source>
        <translation>电阻档</translation>
    </message>
    <message>
        <source>Show Records</source>
        <translation>显示记录</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>电压档</translation>
    </message>
    <message>
        <source>Voltage Gear</source>
        <translation>电压档</translation>
    </message>
</context>
<context>
    <name>DataBaseShow</name>
    <message>
        <source>Capacitance(pF)</source>
        <translation>电容档(pF)</translation>
    </message>
    <message>
        <source>Date Time</source>
        <translation>时间日期</translation>
    </message>
    <message>
        <source>Diode/Buzzer</source>
        <translation>二极管/蜂鸣</translation>
    </message>
    <message>
        <source>History Data</source>
        <translation>历史记录</translation>
    </message>
    <message>
        <source>Resistance(Ω)</source>
        <translation>电阻档(Ω)</translation>
    </message>
    <message>
        <source>Voltage(V)</source>
        <translation>电压档(V)</translation>
    </message>
</context>
<context>
    <name>PoweWaveAnalysis</name>
    <message>
        <source>Archive failed</source>
        <translation>存档失败</translation>
    </message>
    <message>
        <source>Auto Scale</source>
        <translation>自动量程</translation>
    </message>
    <message>
        <source>Capacity</source>
        <translation>容量</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清除</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Current Range</source>
        <translation>电流量程</translation>
    </message>
    <message>
        <source>Current curve Download</source>
        <translation>当前曲线下传</translation>
    </message>
    <message>
        <source>Current curve Upload</source>
        <translation>当前曲线上传</translation>
    </message>
    <message>
        <source>Current curve archive</source>
        <translation>当前曲线存档</translation>
    </message>
    <message>
        <source>Current: </source>
        <translation>电流:</translation>
    </message>
    <message>
        <source>Device Status</source>
        <translation>设备状态</translation>
    </message>
    <message>
        <source>Elapsed Time</source>
        <translation>累计时间</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>隐藏</translation>
    </message>
    <message>
        <source>Import failed</source>
        <translation>导入失败</translation>
    </message>
    <message>
        <source>Imported: </source>
        <translation>已导入:</translation>
    </message>
    <message>
        <source>Index: </source>
        <translation>位置:</translation>
    </message>
    <message>
        <source>Input Voltage</source>
        <translation>输入电压</translation>
    </message>
    <message>
        <source>Not Connected</source>
        <translation>未连接</translation>
    </message>
    <message>
        <source>Output Current</source>
        <translation>输出电流</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Real-time Voltage</source>
        <translation>实时电压</translation>
    </message>
    <message>
        <source>Saved: </source>
        <translation>已保存:</translation>
    </message>
    <message>
        <source>Select curve archive</source>
        <translation>选择曲线存档</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>显示</translation>
    </message>
    <message>
        <source>Standard Curves</source>
        <translation>标准曲线</translation>
    </message>
    <message>
        <source>Standard Voltage</source>
        <translation>标准电压</translation>
    </message>
    <message>
        <source>Standard curve import</source>
        <translation>标准曲线导入</translation>
    </message>
    <message>
        <source>Time: </source>
        <translation>时间:</translation>
    </message>
    <message>
        <source>Voltage Curves</source>
        <translation>电压曲线</translation>
    </message>
    <message>
        <source>Voltage: </source>
        <translation>电压:</translation>
    </message>
</context>
<context>
    <name>SysSettings</name>
    <message>
        <source>0%</source>
        <translation>0%</translation>
    </message>
    <message>
        <source>8000</source>
        <translation>8000</translation>
    </message>
    <message>
        <source>8078</source>
        <translation>8078</translation>
    </message>
    <message>
        <source>API Port</source>
        <translation>API端口</translation>
    </message>
    <message>
        <source>Adjust the main window background transparency while keeping the title bar, buttons and content cards readable.</source>
        <translation>调整窗口主背景的透明程度，标题栏、按钮和内容卡片保持清晰。</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Chinese Manual</source>
        <translation>中文手册</translation>
    </message>
    <message>
        <source>Configure host, docs port, and API port separately.</source>
        <translation>可分别配置主机地址、文档端口和API端口。</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已连接</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>连接状态</translation>
    </message>
    <message>
        <source>Connection Status</source>
        <translation>连接状态</translation>
    </message>
    <message>
        <source>Current Version</source>
        <translation>当前版本号</translation>
    </message>
    <message>
        <source>Default server settings restored.</source>
        <translation>默认服务器配置已恢复。</translation>
    </message>
    <message>
        <source>Detailed USB logs are disabled.</source>
        <translation>USB详细日志已关闭。</translation>
    </message>
    <message>
        <source>Detailed USB logs are enabled.</source>
        <translation>USB详细日志已开启。</translation>
    </message>
    <message>
        <source>Device Snapshot</source>
        <translation>设备概览</translation>
    </message>
    <message>
        <source>Docs Port</source>
        <translation>文档端口</translation>
    </message>
    <message>
        <source>English Manual</source>
        <translation></translation>
    </message>
    <message>
        <source>Example: http://127.0.0.1</source>
        <translation>例如：http://127.0.0.1</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>Export Logs to Desktop</source>
        <translation>日志导出到桌面</translation>
    </message>
    <message>
        <source>FEL Ready</source>
        <translation>FEL 已就绪</translation>
    </message>
    <message>
        <source>FEL Status</source>
        <translation>FEL 状态</translation>
    </message>
    <message>
        <source>Firmware Type</source>
        <translation>固件类型</translation>
    </message>
    <message>
        <source>Highlights</source>
        <translation>操作提示</translation>
    </message>
    <message>
        <source>Host</source>
        <translation>主机地址</translation>
    </message>
    <message>
        <source>Host ID</source>
        <translation>主机ID</translation>
    </message>
    <message>
        <source>Host Version</source>
        <translation>主机版本号</translation>
    </message>
    <message>
        <source>Install FEL Driver</source>
        <translation>安装FEL驱动</translation>
    </message>
    <message>
        <source>Installing FEL driver, please approve the Windows permission prompt.</source>
        <translation>正在安装FEL驱动，请确认Windows权限提示。</translation>
    </message>
    <message>
        <source>Installing...</source>
        <translation>安装中...</translation>
    </message>
    <message>
        <source>Keep the cable connected until the upgrade progress reaches 100 percent.</source>
        <translation>在升级进度到达 100% 前，不要断开连接线。</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言切换</translation>
    </message>
    <message>
        <source>Language switching takes effect immediately and refreshes the interface.</source>
        <translation>语言切换会立即生效，并刷新当前界面。</translation>
    </message>
    <message>
        <source>Latest Version</source>
        <translation>最新版本号</translation>
    </message>
    <message>
        <source>Log export failed.</source>
        <translation>日志导出失败。</translation>
    </message>
    <message>
        <source>MCU Firmware Upgrade</source>
        <translation>MCU 固件升级</translation>
    </message>
    <message>
        <source>Manage firmware update, device identity and language preferences from one panel.</source>
        <translation>在同一界面中管理固件升级、设备身份信息和语言偏好。</translation>
    </message>
    <message>
        <source>Multimeter history is kept for this session only.</source>
        <translation>万用表历史数据仅保留在本次运行中。</translation>
    </message>
    <message>
        <source>Multimeter history will be saved to file.</source>
        <translation>万用表历史数据将保存到文件。</translation>
    </message>
    <message>
        <source>Not Connected</source>
        <translation>未连接</translation>
    </message>
    <message>
        <source>Not Ready</source>
        <translation>未就绪</translation>
    </message>
    <message>
        <source>Offline or unreachable, retrying automatically.</source>
        <translation>离线或不可达，正在自动重试。</translation>
    </message>
    <message>
        <source>Online Docs</source>
        <translation>在线文档中心</translation>
    </message>
    <message>
        <source>Online, checked automatically every 10 seconds.</source>
        <translation>在线，每 10 秒自动检测一次。</translation>
    </message>
    <message>
        <source>Other Settings</source>
        <translation>其他设置</translation>
    </message>
    <message>
        <source>Processing...</source>
        <translation>处理中...</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>已就绪</translation>
    </message>
    <message>
        <source>Reset Default</source>
        <translation>恢复默认</translation>
    </message>
    <message>
        <source>Review device identity information, switch the interface language, and open online manuals.</source>
        <translation>查看设备身份信息、切换界面语言并打开在线文档。</translation>
    </message>
    <message>
        <source>Save Meter History</source>
        <translation>保存万用表历史</translation>
    </message>
    <message>
        <source>Saved to: </source>
        <translation>已保存到：</translation>
    </message>
    <message>
        <source>Server Host</source>
        <translation>服务器地址</translation>
    </message>
    <message>
        <source>Server Link</source>
        <translation>服务器连接</translation>
    </message>
    <message>
        <source>Server settings saved.</source>
        <translation>服务器配置已保存。</translation>
    </message>
    <message>
        <source>System Console</source>
        <translation>系统控制台</translation>
    </message>
    <message>
        <source>USB Connected</source>
        <translation>USB 已连接</translation>
    </message>
    <message>
        <source>USB Debug</source>
        <translation>USB调试</translation>
    </message>
    <message>
        <source>USB Not Connected</source>
        <translation>USB 未连接</translation>
    </message>
    <message>
        <source>Uninstall FEL Driver</source>
        <translation>卸载FEL驱动</translation>
    </message>
    <message>
        <source>Uninstalling FEL driver, please approve the Windows permission prompt.</source>
        <translation>正在卸载FEL驱动，请确认Windows权限提示。</translation>
    </message>
    <message>
        <source>Upgrade</source>
        <translation>升级</translation>
    </message>
    <message>
        <source>Upgrade Faild</source>
        <translation>升级失败</translation>
    </message>
    <message>
        <source>Upgrade Progress</source>
        <translation>升级进度</translation>
    </message>
    <message>
        <source>Upgrade complete</source>
        <translation>升级完成</translation>
    </message>
    <message>
        <source>Upgrade the controller firmware with a monitored progress flow.</source>
        <translation>以可监控的流程完成控制器固件升级。</translation>
    </message>
    <message>
        <source>Upgrade..., please wait.</source>
        <translation>升级中，请勿拔掉连接线</translation>
    </message>
    <message>
        <source>Use the firmware panel to verify connection before starting an upgrade.</source>
        <translation>开始升级前，先在固件面板确认连接状态。</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>等待连接</translation>
    </message>
    <message>
        <source>Window Background Opacity</source>
        <translation>软件背景透明度</translation>
    </message>
</context>
<context>
    <name>UserSettings</name>
    <message>
        <source>Automatic Login</source>
        <comment>自动登录</comment>
        <translation>自动登录</translation>
    </message>
    <message>
        <source>Back</source>
        <comment>返回</comment>
        <translation>返回</translation>
    </message>
    <message>
        <source>Confirm</source>
        <comment>确认</comment>
        <translation>确认</translation>
    </message>
    <message>
        <source>Confirm Password:</source>
        <comment>确认密码:</comment>
        <translation>确认密码：</translation>
    </message>
    <message>
        <source>Create a new account for this workstation.</source>
        <translation>为当前工作站创建新账户。</translation>
    </message>
    <message>
        <source>Email:</source>
        <translation>邮箱:</translation>
    </message>
    <message>
        <source>Forget Password?</source>
        <comment>忘记密码?</comment>
        <translation>忘记密码？</translation>
    </message>
    <message>
        <source>Highlights</source>
        <translation>功能亮点</translation>
    </message>
    <message>
        <source>Login In</source>
        <comment>登录</comment>
        <translation>登录</translation>
    </message>
    <message>
        <source>Manage sign-in, registration and password recovery in one place.</source>
        <translation>在一个界面中完成登录、注册和密码修改。</translation>
    </message>
    <message>
        <source>Modify Password</source>
        <comment>修改密码</comment>
        <translation>修改密码</translation>
    </message>
    <message>
        <source>Quorvel Account</source>
        <translation>Quorvel 账户中心</translation>
    </message>
    <message>
        <source>New Password:</source>
        <comment>新密码:</comment>
        <translation>新密码：</translation>
    </message>
    <message>
        <source>No Account?</source>
        <comment>没有账号?</comment>
        <translation>没有账号？</translation>
    </message>
    <message>
        <source>Old Password:</source>
        <comment>旧密码:</comment>
        <translation>旧密码：</translation>
    </message>
    <message>
        <source>Password:</source>
        <comment>密码:</comment>
        <translation>密码：</translation>
    </message>
    <message>
        <source>Personal Privacy Policy and Agreement</source>
        <comment>同意个人隐私政策与用户协议</comment>
        <translation>个人隐私保护政策及协议</translation>
    </message>
    <message>
        <source>Prepared for account APIs without changing the interaction structure.</source>
        <translation>为后续接入账户接口预留结构，不需要再推翻界面交互。</translation>
    </message>
    <message>
        <source>Register</source>
        <comment>注册</comment>
        <translation>注册</translation>
    </message>
    <message>
        <source>Remember The Password</source>
        <comment>记住密码</comment>
        <translation>记住密码</translation>
    </message>
    <message>
        <source>Secure credential input with clear role-based flows.</source>
        <translation>更清晰的登录、注册与密码修改流程。</translation>
    </message>
    <message>
        <source>Unified form layout for faster operation and easier maintenance.</source>
        <translation>统一的表单布局，操作更直接，后续维护也更简单。</translation>
    </message>
    <message>
        <source>Update your credentials securely before returning to login.</source>
        <translation>完成密码修改后再返回登录。</translation>
    </message>
    <message>
        <source>Use your account to access measurement and tool data.</source>
        <translation>使用账户进入系统并访问测量与工具数据。</translation>
    </message>
    <message>
        <source>User Login</source>
        <comment>用户登录</comment>
        <translation>用户登录</translation>
    </message>
    <message>
        <source>User Name:</source>
        <comment>用户名:</comment>
        <translation>用户名:</translation>
    </message>
    <message>
        <source>User Register</source>
        <comment>用户注册</comment>
        <translation>用户注册</translation>
    </message>
</context>
<context>
    <name>UpgradeWindow</name>
    <message>
        <source>A new software version has been detected. Do you want to upgrade now?</source>
        <translation>检测到新的软件版本，是否现在升级?</translation>
    </message>
    <message>
        <source>A new version is available.</source>
        <translation>检测到新版本。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Cancel upgrade</source>
        <translation>取消升级</translation>
    </message>
    <message>
        <source>Checking for updates, please wait...</source>
        <translation>正在检测更新，请稍候..</translation>
    </message>
    <message>
        <source>Connect to Server...</source>
        <translation>正在连接服务器...</translation>
    </message>
    <message>
        <source>Connect to Server...</source>
        <comment>连接服务器...</comment>
        <translation>连接服务器...</translation>
    </message>
    <message>
        <source>Current version: </source>
        <translation>当前版本:</translation>
    </message>
    <message>
        <source>Ignore this version</source>
        <translation>忽略此版本</translation>
    </message>
    <message>
        <source>Latest version: </source>
        <translation>最新版本:</translation>
    </message>
    <message>
        <source>Quorvel upgrade</source>
        <translation>Quorvel升级</translation>
    </message>
    <message>
        <source>No update is available.</source>
        <translation>当前无需更新。</translation>
    </message>
    <message>
        <source>The update failed, please check whether the network is normal.</source>
        <translation>更新失败，请检查网络是否正常.</translation>
    </message>
    <message>
        <source>Update content: </source>
        <translation>更新内容:</translation>
    </message>
    <message>
        <source>Upgrade</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>You are already using the latest version.</source>
        <translation>当前已是最新版本。</translation>
    </message>
    <message>
        <source>download file...</source>
        <translation>正在下载文件...</translation>
    </message>
    <message>
        <source>download finished</source>
        <translation>下载完成</translation>
    </message>
    <message>
        <source>install</source>
        <translation>开始安装</translation>
    </message>
</context>
<context>
    <name>SystemManager</name>
    <message>
        <source>Driver installation was cancelled by the user.</source>
        <translation></translation>
    </message>
    <message>
        <source>Driver uninstallation was cancelled by the user.</source>
        <translation></translation>
    </message>
    <message>
        <source>FEL WinUSB driver installed successfully.</source>
        <translation></translation>
    </message>
    <message>
        <source>FEL WinUSB driver uninstalled successfully.</source>
        <translation></translation>
    </message>
    <message>
        <source>FEL driver files were not found.</source>
        <translation></translation>
    </message>
    <message>
        <source>FEL driver installation failed. Exit code: %1</source>
        <translation></translation>
    </message>
    <message>
        <source>FEL driver installation is only supported on Windows.</source>
        <translation></translation>
    </message>
    <message>
        <source>FEL driver uninstall files were not found.</source>
        <translation></translation>
    </message>
    <message>
        <source>FEL driver uninstallation failed. Exit code: %1</source>
        <translation></translation>
    </message>
    <message>
        <source>FEL driver uninstallation is only supported on Windows.</source>
        <translation></translation>
    </message>
</context>
</TS>
