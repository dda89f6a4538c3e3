<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>ChildProcess</name>
    <message>
        <source>no such program: %1</source>
        <translation>没有此程序：%1</translation>
    </message>
    <message>
        <source>it was ended by a signal</source>
        <translation>被信号终止</translation>
    </message>
    <message>
        <source>it ended with status %1</source>
        <translation>退出状态 %1</translation>
    </message>
</context>
<context>
    <name>Components</name>
    <message>
        <source>the file is missing</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>the plug-in has not loaded it</source>
        <translation>插件没有加载它</translation>
    </message>
    <message>
        <source>the file is not a program</source>
        <translation>该文件不是可执行程序</translation>
    </message>
</context>
<context>
    <name>DebugLogPane</name>
    <message>
        <source>Save Debug Log</source>
        <translation>保存调试日志</translation>
    </message>
    <message>
        <source>Log files (*.log *.txt);;All files (*)</source>
        <translation>日志文件 (*.log *.txt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>保存...</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
</context>
<context>
    <name>HostSession</name>
    <message>
        <source>it built no window</source>
        <translation>插件没有创建窗口</translation>
    </message>
    <message>
        <source>Port %1</source>
        <translation>串口 %1</translation>
    </message>
    <message>
        <source>The virtual receiver is gone: %1</source>
        <translation>虚拟接收机已退出：%1</translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Save Debug Log...</source>
        <translation>保存调试日志(&amp;S)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Receiver</source>
        <translation>接收机(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Product</source>
        <translation>产品(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Default Product</source>
        <translation>默认产品(&amp;D)</translation>
    </message>
    <message>
        <source>Product &amp;27</source>
        <translation>产品 &amp;27</translation>
    </message>
    <message>
        <source>Product &amp;31</source>
        <translation>产品 &amp;31</translation>
    </message>
    <message>
        <source>&amp;Virtual Receiver</source>
        <translation>虚拟接收机(&amp;V)</translation>
    </message>
    <message>
        <source>Play &amp;Capture...</source>
        <translation>播放采集文件(&amp;C)...</translation>
    </message>
    <message>
        <source>&amp;Back to the Simulated Sky</source>
        <translation>返回仿真星空(&amp;B)</translation>
    </message>
    <message>
        <source>Playing &amp;Speed</source>
        <translation>播放速度(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>设置(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>语言(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Debug Log</source>
        <translation>调试日志(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Short Help</source>
        <translation>简要帮助(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;About GNSS Workbench</source>
        <translation>关于 GNSS Workbench(&amp;A)</translation>
    </message>
    <message>
        <source>Debug Log</source>
        <translation>调试日志</translation>
    </message>
    <message>
        <source>&lt;h2&gt;The workbench could not be loaded&lt;/h2&gt;&lt;p&gt;%1&lt;/p&gt;&lt;p&gt;%2&lt;/p&gt;</source>
        <translation>&lt;h2&gt;无法加载工作台&lt;/h2&gt;&lt;p&gt;%1&lt;/p&gt;&lt;p&gt;%2&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Codec</source>
        <translation>编解码库</translation>
    </message>
    <message>
        <source>Archiver</source>
        <translation>压缩程序</translation>
    </message>
    <message>
        <source>The codec is not in use, so nothing will be decoded: %1 (%2)</source>
        <translation>编解码库未启用，数据将不会被解码：%1（%2）</translation>
    </message>
    <message>
        <source>The archiver is not in use, so full logs stay uncompressed: %1 (%2)</source>
        <translation>压缩程序未启用，写满的日志不会被压缩：%1（%2）</translation>
    </message>
    <message>
        <source>Play Capture</source>
        <translation>播放采集文件</translation>
    </message>
    <message>
        <source>Captures (*.bin *.log *.nmea *.txt);;All files (*)</source>
        <translation>采集文件 (*.bin *.log *.nmea *.txt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>About GNSS Workbench</source>
        <translation>关于 GNSS Workbench</translation>
    </message>
    <message>
        <source>&lt;h3&gt;GNSS Workbench %1&lt;/h3&gt;&lt;p&gt;Watch, configure, test and replay a GNSS receiver on a serial line.&lt;/p&gt;&lt;p&gt;Built with Qt %2.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;GNSS Workbench %1&lt;/h3&gt;&lt;p&gt;通过串口观察、配置、测试和回放 GNSS 接收机。&lt;/p&gt;&lt;p&gt;基于 Qt %2 构建。&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Short Help</source>
        <translation>简要帮助</translation>
    </message>
    <message>
        <source>&lt;h3&gt;First steps&lt;/h3&gt;&lt;ul&gt;&lt;li&gt;The first button of the tool bar opens and closes the port; its arrow offers the ports. At the start the virtual receiver&apos;s port is open already.&lt;/li&gt;&lt;li&gt;A click on an entry of the control panel opens that view or brings it to the front.&lt;/li&gt;&lt;li&gt;The start button sends the start or stop command to the receiver.&lt;/li&gt;&lt;li&gt;Every byte received is kept in the folder GnssData beside the program.&lt;/li&gt;&lt;li&gt;&lt;b&gt;Receiver&lt;/b&gt; chooses the product, switches the virtual receiver and lets it play a recorded capture.&lt;/li&gt;&lt;li&gt;&lt;b&gt;View &amp;gt; Debug Log&lt;/b&gt; (F12) shows what happens inside.&lt;/li&gt;&lt;/ul&gt;</source>
        <translation>&lt;h3&gt;入门&lt;/h3&gt;&lt;ul&gt;&lt;li&gt;工具栏的第一个按钮打开和关闭串口，其箭头列出可选串口。启动时虚拟接收机的串口已经打开。&lt;/li&gt;&lt;li&gt;单击控制面板中的条目可打开对应视图，或将其置于最前。&lt;/li&gt;&lt;li&gt;启动定位按钮向接收机发送启动或停止命令。&lt;/li&gt;&lt;li&gt;收到的每个字节都保存在程序旁的 GnssData 文件夹中。&lt;/li&gt;&lt;li&gt;&lt;b&gt;接收机&lt;/b&gt;菜单可选择产品、开关虚拟接收机，并让它播放采集文件。&lt;/li&gt;&lt;li&gt;&lt;b&gt;视图 &amp;gt; 调试日志&lt;/b&gt;（F12）显示内部运行情况。&lt;/li&gt;&lt;/ul&gt;</translation>
    </message>
</context>
<context>
    <name>PluginSession</name>
    <message>
        <source>the file is missing</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>it does not offer the interface %1</source>
        <translation>它没有提供接口 %1</translation>
    </message>
</context>
<context>
    <name>ReceiverProcess</name>
    <message>
        <source>no folder for its port: %1</source>
        <translation>无法为其串口创建文件夹：%1</translation>
    </message>
    <message>
        <source>Virtual receiver off</source>
        <translation>虚拟接收机已关闭</translation>
    </message>
    <message>
        <source>Virtual receiver starting</source>
        <translation>虚拟接收机正在启动</translation>
    </message>
    <message>
        <source>Virtual receiver on %1</source>
        <translation>虚拟接收机：%1</translation>
    </message>
    <message>
        <source>Virtual receiver gone: %1</source>
        <translation>虚拟接收机已退出：%1</translation>
    </message>
</context>
</TS>
