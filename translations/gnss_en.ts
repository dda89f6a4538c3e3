<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
    <context>
        <name>AssistOffline</name>
        <message>
            <source>离线辅助数据</source>
            <translation>Offline Assistance Data</translation>
        </message>
    </context>
    <context>
        <name>AssistOnline</name>
        <message>
            <source>在线辅助数据</source>
            <translation>Online Assistance Data</translation>
        </message>
    </context>
    <context>
        <name>CmdConfig</name>
        <message>
            <source>命令配置</source>
            <translation>Command configuration</translation>
        </message>
        <message>
            <source>配置GNSS星座</source>
            <translation>Constellations used for the fix</translation>
        </message>
        <message>
            <source>配置冷热启动模式</source>
            <translation>Cold and hot start mode</translation>
        </message>
        <message>
            <source>自动模式（有历史信息时执行热启动）</source>
            <translation>Automatic (hot start when there is history information)</translation>
        </message>
        <message>
            <source>冷启动（每次启动都会删除历史信息）</source>
            <translation>Cold start (every start deletes the history information)</translation>
        </message>
        <message>
            <source>配置NMEA输出语句类型</source>
            <translation>NMEA sentences to output</translation>
        </message>
        <message>
            <source>配置捕获低功耗特性</source>
            <translation>Low power while acquiring</translation>
        </message>
        <message>
            <source>禁用低功耗</source>
            <translation>Low power off</translation>
        </message>
        <message>
            <source>使能低功耗</source>
            <translation>Low power on</translation>
        </message>
        <message>
            <source>配置跟踪低功耗特性</source>
            <translation>Low power while tracking</translation>
        </message>
        <message>
            <source>配置跟踪抗干扰特性</source>
            <translation>Anti-jam scanning while tracking</translation>
        </message>
        <message>
            <source>禁用扫频</source>
            <translation>Scanning off</translation>
        </message>
        <message>
            <source>使能扫频</source>
            <translation>Scanning on</translation>
        </message>
        <message>
            <source>周期性扫频</source>
            <translation>Periodic scan</translation>
        </message>
        <message>
            <source>细扫频</source>
            <translation>Fine scan</translation>
        </message>
        <message>
            <source>配置定位频率</source>
            <translation>Fix rate</translation>
        </message>
        <message>
            <source>配置PPS特性，仅支持1Hz</source>
            <translation>PPS, 1 Hz only</translation>
        </message>
        <message>
            <source>禁用PPS</source>
            <translation>PPS off</translation>
        </message>
        <message>
            <source>使能PPS</source>
            <translation>PPS on</translation>
        </message>
        <message>
            <source>PPS脉冲上高电平维持时间</source>
            <translation>Time for which the PPS pulse stays high</translation>
        </message>
        <message>
            <source>(脉冲宽度ms）</source>
            <translation>(pulse width, ms)</translation>
        </message>
        <message>
            <source>配置芯片周期性上报信息</source>
            <translation>Periodic reports of the chip</translation>
        </message>
        <message>
            <source>观测值</source>
            <translation>Measurements</translation>
        </message>
        <message>
            <source>定位结果</source>
            <translation>Navigation solution</translation>
        </message>
        <message>
            <source>配置定位优先级模式
仅适用于冷启动场景</source>
            <translation>Priority of the fix
For cold starts only</translation>
        </message>
        <message>
            <source>自动模式</source>
            <translation>Automatic</translation>
        </message>
        <message>
            <source>TTFF优先</source>
            <translation>TTFF first</translation>
        </message>
        <message>
            <source>ACC优先</source>
            <translation>Accuracy first</translation>
        </message>
    </context>
    <context>
        <name>Cn0ViewWin</name>
        <message>
            <source>信号强度</source>
            <translation>Signal Strength</translation>
        </message>
    </context>
    <context>
        <name>CommandTexts</name>
        <message>
            <source>启动GNSS定位</source>
            <translation>Start GNSS positioning: </translation>
        </message>
        <message>
            <source>关闭GNSS定位</source>
            <translation>Stop GNSS positioning: </translation>
        </message>
        <message>
            <source>注入历史信息</source>
            <translation>Inject history: </translation>
        </message>
        <message>
            <source>注入PGNSS GPS时间</source>
            <translation>Inject PGNSS GPS time: </translation>
        </message>
        <message>
            <source>注入PGNSS 参考位置</source>
            <translation>Inject PGNSS reference position: </translation>
        </message>
        <message>
            <source>注入PGNSS GPS星历</source>
            <translation>Inject PGNSS GPS ephemeris: </translation>
        </message>
        <message>
            <source>注入PGNSS GLO星历</source>
            <translation>Inject PGNSS GLO ephemeris: </translation>
        </message>
        <message>
            <source>注入PGNSS BDS星历</source>
            <translation>Inject PGNSS BDS ephemeris: </translation>
        </message>
        <message>
            <source>注入PGNSS GAL星历</source>
            <translation>Inject PGNSS GAL ephemeris: </translation>
        </message>
        <message>
            <source>注入PGNSS QZS星历</source>
            <translation>Inject PGNSS QZS ephemeris: </translation>
        </message>
        <message>
            <source>PGNSS GPS UTC注入</source>
            <translation>Inject PGNSS GPS UTC: </translation>
        </message>
        <message>
            <source>PGNSS GPS完好性信息注入</source>
            <translation>Inject PGNSS GPS integrity: </translation>
        </message>
        <message>
            <source>注入PGNSS GLO完好性信息</source>
            <translation>Inject PGNSS GLO integrity: </translation>
        </message>
        <message>
            <source>注入PGNSS BDS完好性信息</source>
            <translation>Inject PGNSS BDS integrity: </translation>
        </message>
        <message>
            <source>注入PGNSS GAL完好性信息</source>
            <translation>Inject PGNSS GAL integrity: </translation>
        </message>
        <message>
            <source>注入PGNSS QZS完好性信息</source>
            <translation>Inject PGNSS QZS integrity: </translation>
        </message>
        <message>
            <source>PGNSS GPS电离层参数注入</source>
            <translation>Inject PGNSS GPS ionosphere: </translation>
        </message>
        <message>
            <source>注入PGNSS GLO频点转换关系</source>
            <translation>Inject PGNSS GLO channels: </translation>
        </message>
        <message>
            <source>注入高精度电离层参数</source>
            <translation>Inject high-precision ionosphere: </translation>
        </message>
        <message>
            <source>注入AGNSS GPS预测时间</source>
            <translation>Inject AGNSS GPS time: </translation>
        </message>
        <message>
            <source>注入AGNSS 位置预测</source>
            <translation>Inject AGNSS position: </translation>
        </message>
        <message>
            <source>注入AGNSS GPS星历数据</source>
            <translation>Inject AGNSS GPS ephemeris: </translation>
        </message>
        <message>
            <source>注入AGNSS GPS电离层参数</source>
            <translation>Inject AGNSS GPS ionosphere: </translation>
        </message>
        <message>
            <source>注入AGNSS UTC时间</source>
            <translation>Inject AGNSS UTC time: </translation>
        </message>
        <message>
            <source>注入AGNSS GPS完好性信息</source>
            <translation>Inject AGNSS GPS integrity: </translation>
        </message>
        <message>
            <source>注入AGNSS GLO预测时间</source>
            <translation>Inject AGNSS GLO time: </translation>
        </message>
        <message>
            <source>注入AGNSS BDS预测时间</source>
            <translation>Inject AGNSS BDS time: </translation>
        </message>
        <message>
            <source>注入AGNSS GAL预测时间</source>
            <translation>Inject AGNSS GAL time: </translation>
        </message>
        <message>
            <source>注入AGNSS GLO电离层参数</source>
            <translation>Inject AGNSS GLO ionosphere: </translation>
        </message>
        <message>
            <source>注入AGNSS BDS电离层参数</source>
            <translation>Inject AGNSS BDS ionosphere: </translation>
        </message>
        <message>
            <source>注入AGNSS GAL电离层参数</source>
            <translation>Inject AGNSS GAL ionosphere: </translation>
        </message>
        <message>
            <source>注入AGNSS GLO星历数据</source>
            <translation>Inject AGNSS GLO ephemeris: </translation>
        </message>
        <message>
            <source>注入AGNSS BDS星历数据</source>
            <translation>Inject AGNSS BDS ephemeris: </translation>
        </message>
        <message>
            <source>注入AGNSS GAL星历数据</source>
            <translation>Inject AGNSS GAL ephemeris: </translation>
        </message>
        <message>
            <source>注入AGNSS GLO完好性信息</source>
            <translation>Inject AGNSS GLO integrity: </translation>
        </message>
        <message>
            <source>注入AGNSS BDS完好性信息</source>
            <translation>Inject AGNSS BDS integrity: </translation>
        </message>
        <message>
            <source>注入AGNSS GAL完好性信息</source>
            <translation>Inject AGNSS GAL integrity: </translation>
        </message>
        <message>
            <source>注入AGNSS GLO UTC时间</source>
            <translation>Inject AGNSS GLO UTC time: </translation>
        </message>
        <message>
            <source>注入AGNSS BDS UTC时间</source>
            <translation>Inject AGNSS BDS UTC time: </translation>
        </message>
        <message>
            <source>注入AGNSS GAL UTC时间</source>
            <translation>Inject AGNSS GAL UTC time: </translation>
        </message>
        <message>
            <source>注入AGNSS GLO频点对应关系</source>
            <translation>Inject AGNSS GLO channels: </translation>
        </message>
        <message>
            <source>注入AGNSS BDS频点对应关系</source>
            <translation>Inject AGNSS BDS channels: </translation>
        </message>
        <message>
            <source>注入AGNSS GAL频点对应关系</source>
            <translation>Inject AGNSS GAL channels: </translation>
        </message>
        <message>
            <source>注入UTC时间</source>
            <translation>Inject UTC time: </translation>
        </message>
        <message>
            <source>无命令发送</source>
            <translation>no command sent</translation>
        </message>
        <message>
            <source>命令发送中</source>
            <translation>command being sent</translation>
        </message>
        <message>
            <source>命令发送成功</source>
            <translation>accepted</translation>
        </message>
        <message>
            <source>命令长度异常</source>
            <translation>invalid length</translation>
        </message>
        <message>
            <source>命令参数异常</source>
            <translation>invalid parameter</translation>
        </message>
        <message>
            <source>命令错误</source>
            <translation>command error</translation>
        </message>
        <message>
            <source>未知错误</source>
            <translation>unknown error</translation>
        </message>
        <message>
            <source>未知命令!</source>
            <translation>Unknown command! </translation>
        </message>
        <message>
            <source>暂不支持的命令！</source>
            <translation>Command not supported yet! </translation>
        </message>
    </context>
    <context>
        <name>CompassViewWin</name>
        <message>
            <source>航向方位</source>
            <translation>Compass</translation>
        </message>
    </context>
    <context>
        <name>ConfigPage</name>
        <message>
            <source>配置GNSS系统</source>
            <translation>Configure constellations:</translation>
        </message>
        <message>
            <source>配置GNSS星座等待 ACK超时</source>
            <translation>Configure constellations: ACK timeout</translation>
        </message>
        <message>
            <source>配置冷热启动模式</source>
            <translation>Configure start mode:</translation>
        </message>
        <message>
            <source>配置启动方式等待 ACK超时</source>
            <translation>Configure start mode: ACK timeout</translation>
        </message>
        <message>
            <source>配置NMEA语句模式</source>
            <translation>Configure NMEA sentences:</translation>
        </message>
        <message>
            <source>配置NMEA语句类型等待 ACK超时</source>
            <translation>Configure NMEA sentences: ACK timeout</translation>
        </message>
        <message>
            <source>配置捕获低功耗</source>
            <translation>Configure acquisition low power:</translation>
        </message>
        <message>
            <source>配置捕获低功耗等待 ACK超时</source>
            <translation>Configure acquisition low power: ACK timeout</translation>
        </message>
        <message>
            <source>配置跟踪低功耗</source>
            <translation>Configure tracking low power:</translation>
        </message>
        <message>
            <source>配置跟踪低功耗等待 ACK超时</source>
            <translation>Configure tracking low power: ACK timeout</translation>
        </message>
        <message>
            <source>配置跟踪抗干扰特性</source>
            <translation>Configure anti-jam scanning:</translation>
        </message>
        <message>
            <source>配置跟踪抗干扰等待 ACK超时</source>
            <translation>Configure anti-jam scanning: ACK timeout</translation>
        </message>
        <message>
            <source>配置定位频率</source>
            <translation>Configure fix rate:</translation>
        </message>
        <message>
            <source>配置定位频率等待 ACK超时</source>
            <translation>Configure fix rate: ACK timeout</translation>
        </message>
        <message>
            <source>配置PPS特性</source>
            <translation>Configure PPS:</translation>
        </message>
        <message>
            <source>配置PPS等待 ACK超时</source>
            <translation>Configure PPS: ACK timeout</translation>
        </message>
        <message>
            <source>配置消息的上报类型</source>
            <translation>Configure reports:</translation>
        </message>
        <message>
            <source>配置芯片上报消息等待 ACK超时</source>
            <translation>Configure reports: ACK timeout</translation>
        </message>
        <message>
            <source>配置定位优先级模式</source>
            <translation>Configure fix priority:</translation>
        </message>
        <message>
            <source>配置冷启动定位优先级等待 ACK超时</source>
            <translation>Configure fix priority: ACK timeout</translation>
        </message>
    </context>
    <context>
        <name>ConfigViewWin</name>
        <message>
            <source>自定义命令</source>
            <translation>Custom commands</translation>
        </message>
        <message>
            <source>发送自定义命令</source>
            <translation>Custom command sent </translation>
        </message>
    </context>
    <context>
        <name>CustomBaudRateWin</name>
        <message>
            <source>输入波特率小于24M</source>
            <translation>Enter a baud rate below 24M</translation>
        </message>
    </context>
    <context>
        <name>DataViewWin</name>
        <message>
            <source>定位数据</source>
            <translation>Position Data</translation>
        </message>
    </context>
    <context>
        <name>FetchNmea</name>
        <message>
            <source>提取NMEA</source>
            <translation>Extract NMEA</translation>
        </message>
    </context>
    <context>
        <name>Gnss</name>
        <message>
            <source>Gnss</source>
            <translation>Gnss</translation>
        </message>
        <message>
            <source>GnssInfo</source>
            <translation>GnssInfo</translation>
        </message>
    </context>
    <context>
        <name>GnssWindow</name>
        <message>
            <source>错误</source>
            <translation>Error</translation>
        </message>
        <message>
            <source>当前已经启动，请勿重复触发！</source>
            <translation>Positioning is already started, please do not start it again!</translation>
        </message>
        <message>
            <source>发送start命令等待 ACK超时</source>
            <translation>Start command: ACK timeout</translation>
        </message>
        <message>
            <source>当前已经停止，请勿重复触发！</source>
            <translation>Positioning is already stopped, please do not stop it again!</translation>
        </message>
        <message>
            <source>停止GNSS定位</source>
            <translation>GNSS positioning stopped</translation>
        </message>
        <message>
            <source>停止定位</source>
            <translation>Stop positioning</translation>
        </message>
        <message>
            <source>启动定位</source>
            <translation>Start positioning</translation>
        </message>
        <message>
            <source>最大速度</source>
            <translation>Maximum</translation>
        </message>
        <message>
            <source>打开串口</source>
            <translation>Open port</translation>
        </message>
        <message>
            <source>关闭串口</source>
            <translation>Close port</translation>
        </message>
        <message>
            <source>关闭串口 </source>
            <translation>Port closed: </translation>
        </message>
        <message>
            <source>当前无可用串口，请检查串口连接状态</source>
            <translation>No serial port available, please check the connection</translation>
        </message>
        <message>
            <source>打开串口 </source>
            <translation>Port opened: </translation>
        </message>
        <message>
            <source>串口切换至 </source>
            <translation>Port changed to </translation>
        </message>
        <message>
            <source>已有历史数据文件，可直接注入</source>
            <translation>A history file is there and can be injected</translation>
        </message>
        <message>
            <source>暂无历史数据，请先保存</source>
            <translation>No history file yet, please save one first</translation>
        </message>
        <message>
            <source>产测视图</source>
            <translation>Production test </translation>
        </message>
        <message>
            <source>打开第</source>
            <translation>Opened production test </translation>
        </message>
        <message>
            <source>个产测视图</source>
            <translation>.</translation>
        </message>
        <message>
            <source>NMEA视图</source>
            <translation>NMEAView</translation>
        </message>
        <message>
            <source>十六进制视图</source>
            <translation>HexView</translation>
        </message>
        <message>
            <source>定位轨迹视图</source>
            <translation>TrackView</translation>
        </message>
        <message>
            <source>信号强度视图</source>
            <translation>SignalView</translation>
        </message>
        <message>
            <source>定位数据视图</source>
            <translation>FixDataView</translation>
        </message>
        <message>
            <source>消息数据视图</source>
            <translation>MessageView</translation>
        </message>
        <message>
            <source>航向方位视图</source>
            <translation>CompassView</translation>
        </message>
        <message>
            <source>卫星分布视图</source>
            <translation>SkyView</translation>
        </message>
        <message>
            <source>数据传输视图</source>
            <translation>PackageView</translation>
        </message>
        <message>
            <source>命令配置视图</source>
            <translation>CommandConfigView</translation>
        </message>
        <message>
            <source>自定义命令视图</source>
            <translation>CustomCommandView</translation>
        </message>
        <message>
            <source>性能测试视图</source>
            <translation>PerformanceTestView</translation>
        </message>
        <message>
            <source>Close All</source>
            <translation>Close All</translation>
        </message>
        <message>
            <source>系统状态：</source>
            <translation>Status:</translation>
        </message>
        <message>
            <source>时间戳</source>
            <translation>Time stamp</translation>
        </message>
        <message>
            <source>清空</source>
            <translation>Clear</translation>
        </message>
        <message>
            <source>滚动到底部</source>
            <translation>Scroll to bottom</translation>
        </message>
        <message>
            <source>平铺</source>
            <translation>Tile</translation>
        </message>
        <message>
            <source>保存数据路径</source>
            <translation>Folder for saved data</translation>
        </message>
        <message>
            <source>选择串口号</source>
            <translation>Choose the port</translation>
        </message>
        <message>
            <source>选择波特率</source>
            <translation>Choose the baud rate</translation>
        </message>
        <message>
            <source>设置自定义波特率</source>
            <translation>Set a custom baud rate</translation>
        </message>
        <message>
            <source>串口设置</source>
            <translation>Serial settings</translation>
        </message>
        <message>
            <source>选择回放速度</source>
            <translation>Choose the replay speed</translation>
        </message>
        <message>
            <source>回放</source>
            <translation>Replay</translation>
        </message>
        <message>
            <source>暂停/继续</source>
            <translation>Pause/resume</translation>
        </message>
        <message>
            <source>在线辅助定位</source>
            <translation>Online assistance</translation>
        </message>
        <message>
            <source>离线辅助定位</source>
            <translation>Offline assistance</translation>
        </message>
        <message>
            <source>固件加载</source>
            <translation>Firmware load</translation>
        </message>
        <message>
            <source>历史信息</source>
            <translation>History information</translation>
        </message>
        <message>
            <source>场景库回放</source>
            <translation>Scene replay</translation>
        </message>
        <message>
            <source>产品测试</source>
            <translation>Production test</translation>
        </message>
        <message>
            <source>常用工具</source>
            <translation>Tools</translation>
        </message>
        <message>
            <source>提取NMEA</source>
            <translation>Extract NMEA</translation>
        </message>
    </context>
    <context>
        <name>HexViewWin</name>
        <message>
            <source>十六进制</source>
            <translation>Hex</translation>
        </message>
        <message>
            <source>列数:</source>
            <translation>Columns:</translation>
        </message>
    </context>
    <context>
        <name>HisInfoInject</name>
        <message>
            <source>历史信息</source>
            <translation>History information</translation>
        </message>
        <message>
            <source>选择文件</source>
            <translation>Choose file</translation>
        </message>
        <message>
            <source>保存历史信息</source>
            <translation>Save history</translation>
        </message>
        <message>
            <source>注入历史信息</source>
            <translation>Inject history</translation>
        </message>
        <message>
            <source>1.历史信息保存路径：工具安装路径根目录/HisInfo&lt;br&gt;2.历史信息保存：持续跟踪一段时间，点击&lt;保存历史信息&gt;按钮&lt;br&gt;3.历史信息注入：非冷启动模式下，启动定位前点击&lt;注入历史信息&gt;按钮&lt;br&gt;</source>
            <translation>1. The history is kept in the program folder, under HisInfo.&lt;br&gt;2. To save it: let the receiver track for a while and click &lt;Save history&gt;.&lt;br&gt;3. To inject it: not in cold start mode, click &lt;Inject history&gt; before starting positioning.&lt;br&gt;</translation>
        </message>
        <message>
            <source>历史信息获取失败，请重新获取</source>
            <translation>Reading the history failed, please try again</translation>
        </message>
        <message>
            <source>打开</source>
            <translation>Opening </translation>
        </message>
        <message>
            <source>失败！</source>
            <translation> failed!</translation>
        </message>
        <message>
            <source>历史信息保存成功: </source>
            <translation>History saved: </translation>
        </message>
        <message>
            <source>历史信息保存路径：</source>
            <translation>History saved in: </translation>
        </message>
        <message>
            <source>不存在!</source>
            <translation> does not exist!</translation>
        </message>
        <message>
            <source>UTC注入失败，不再继续注入历史信息</source>
            <translation>Injecting UTC failed, the history is not injected</translation>
        </message>
        <message>
            <source>历史信息注入UTC时间 组包失败！</source>
            <translation>Inject UTC time for the history: encoding failed!</translation>
        </message>
        <message>
            <source>历史信息注入UTC时间</source>
            <translation>Inject UTC time for the history:</translation>
        </message>
        <message>
            <source>历史信息数据文件 打开失败！</source>
            <translation>Opening the history file failed!</translation>
        </message>
        <message>
            <source>提示</source>
            <translation>Note</translation>
        </message>
        <message>
            <source>文件内容为空，请检查文件是否正确</source>
            <translation>The file is empty, please check that it is the right one</translation>
        </message>
        <message>
            <source>读取历史文件成功：</source>
            <translation>History file read: </translation>
        </message>
        <message>
            <source>注入历史信息 组包失败！</source>
            <translation>Inject history: encoding failed!</translation>
        </message>
        <message>
            <source>注入历史信息数据</source>
            <translation>Inject history:</translation>
        </message>
        <message>
            <source> ACK超时</source>
            <translation> ACK timeout</translation>
        </message>
    </context>
    <context>
        <name>KpiViewWin</name>
        <message>
            <source>性能测试</source>
            <translation>Performance Test</translation>
        </message>
    </context>
    <context>
        <name>LogTextView</name>
        <message>
            <source>显示时间</source>
            <translation>Show time</translation>
        </message>
        <message>
            <source>清空</source>
            <translation>Clear</translation>
        </message>
        <message>
            <source>滚动到底部</source>
            <translation>Scroll to bottom</translation>
        </message>
        <message>
            <source>无可用文件，请检查log文件是否存在！</source>
            <translation>No file available, please check that log files exist!</translation>
        </message>
        <message>
            <source>已是当前测试所有内容！</source>
            <translation>This is all of the current test!</translation>
        </message>
        <message>
            <source>文件</source>
            <translation>File </translation>
        </message>
        <message>
            <source>文件为空！</source>
            <translation> is empty!</translation>
        </message>
        <message>
            <source>打开失败！</source>
            <translation> failed to open!</translation>
        </message>
    </context>
    <context>
        <name>MessageViewWin</name>
        <message>
            <source>消息数据</source>
            <translation>Message Data</translation>
        </message>
    </context>
    <context>
        <name>NMEAViewWin</name>
        <message>
            <source>过滤</source>
            <translation>Filter</translation>
        </message>
        <message>
            <source>过滤文本</source>
            <translation>Filter text</translation>
        </message>
    </context>
    <context>
        <name>PackageViewWin</name>
        <message>
            <source>数据传输</source>
            <translation>Data Transfer</translation>
        </message>
    </context>
    <context>
        <name>PositioningViewWin</name>
        <message>
            <source>定位轨迹</source>
            <translation>Position Track</translation>
        </message>
    </context>
    <context>
        <name>SatellitesPosViewWin</name>
        <message>
            <source>卫星分布</source>
            <translation>Satellite Distribution</translation>
        </message>
    </context>
    <context>
        <name>SenceReplay</name>
        <message>
            <source>场景库回放</source>
            <translation>Scene Replay</translation>
        </message>
    </context>
    <context>
        <name>SerialSetting</name>
        <message>
            <source>串口设置</source>
            <translation>Serial Settings</translation>
        </message>
    </context>
    <context>
        <name>ShortcutCmdWin</name>
        <message>
            <source>发送</source>
            <translation>Send</translation>
        </message>
        <message>
            <source>取消</source>
            <translation>Cancel</translation>
        </message>
    </context>
    <context>
        <name>StatusLogText</name>
        <message>
            <source>超时</source>
            <translation>timeout</translation>
        </message>
        <message>
            <source>异常</source>
            <translation>invalid</translation>
        </message>
        <message>
            <source>错误</source>
            <translation>error</translation>
        </message>
        <message>
            <source>失败</source>
            <translation>fail</translation>
        </message>
    </context>
    <context>
        <name>VersionLoad</name>
        <message>
            <source>固件加载</source>
            <translation>Firmware Load</translation>
        </message>
        <message>
            <source>加载进度：0%</source>
            <translation>Progress: 0%</translation>
        </message>
    </context>
</TS>
