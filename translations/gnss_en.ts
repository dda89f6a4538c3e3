<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>AgeEdit</name>
    <message>
        <source>数据龄期: </source>
        <translation>Data age: </translation>
    </message>
</context>
<context>
    <name>AgnssReply</name>
    <message>
        <source>GLO 预测时间</source>
        <translation>GLO reference time</translation>
    </message>
    <message>
        <source>GLO 星历</source>
        <translation>GLO ephemeris</translation>
    </message>
    <message>
        <source>GLO UTC时间</source>
        <translation>GLO UTC time</translation>
    </message>
    <message>
        <source>BDS 预测时间</source>
        <translation>BDS reference time</translation>
    </message>
    <message>
        <source>BDS 星历</source>
        <translation>BDS ephemeris</translation>
    </message>
    <message>
        <source>BDS UTC时间</source>
        <translation>BDS UTC time</translation>
    </message>
    <message>
        <source>GAL 预测时间</source>
        <translation>GAL reference time</translation>
    </message>
    <message>
        <source>GAL 星历</source>
        <translation>GAL ephemeris</translation>
    </message>
    <message>
        <source>GAL UTC时间</source>
        <translation>GAL UTC time</translation>
    </message>
    <message>
        <source>AGNSS注入%1 ACK超时</source>
        <translation>Inject AGNSS %1: ACK timeout</translation>
    </message>
</context>
<context>
    <name>AssistOffline</name>
    <message>
        <source>离线辅助数据</source>
        <translation>Offline Assistance Data</translation>
    </message>
    <message>
        <source>辅助星历</source>
        <translation>Assistance ephemeris</translation>
    </message>
    <message>
        <source>保存配置</source>
        <translation>Save settings</translation>
    </message>
    <message>
        <source>卫星星座</source>
        <translation>Constellations</translation>
    </message>
    <message>
        <source>辅助数据类型</source>
        <translation>Assistance data types</translation>
    </message>
    <message>
        <source>数据周期</source>
        <translation>Period</translation>
    </message>
    <message>
        <source>天</source>
        <translation>days</translation>
    </message>
    <message>
        <source>更新星历</source>
        <translation>Update ephemeris</translation>
    </message>
    <message>
        <source>辅助数据路径:</source>
        <translation>Data file:</translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation>Choose file</translation>
    </message>
    <message>
        <source>辅助数据有效期：</source>
        <translation>Valid:</translation>
    </message>
    <message>
        <source>辅助数据文件大小：</source>
        <translation>File size:</translation>
    </message>
    <message>
        <source>辅助时间</source>
        <translation>Assistance time</translation>
    </message>
    <message>
        <source>注入时间</source>
        <translation>Inject time</translation>
    </message>
    <message>
        <source>来源</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>系统UTC时间</source>
        <translation>System UTC time</translation>
    </message>
    <message>
        <source>自定义UTC时间</source>
        <translation>Custom UTC time</translation>
    </message>
    <message>
        <source>自定义UTC时间:</source>
        <translation>Custom UTC time:</translation>
    </message>
    <message>
        <source>自定义Unix时间:</source>
        <translation>Custom Unix time:</translation>
    </message>
    <message>
        <source>辅助位置</source>
        <translation>Assistance position</translation>
    </message>
    <message>
        <source>经度</source>
        <translation>Lon</translation>
    </message>
    <message>
        <source>纬度</source>
        <translation>Lat</translation>
    </message>
    <message>
        <source>高度</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>注入位置</source>
        <translation>Inject position</translation>
    </message>
    <message>
        <source>数据注入</source>
        <translation>Data injection</translation>
    </message>
    <message>
        <source>模式</source>
        <translation>Mode</translation>
    </message>
    <message>
        <source>保持历史数据</source>
        <translation>Keep history data</translation>
    </message>
    <message>
        <source>清除历史数据</source>
        <translation>Clear history data</translation>
    </message>
    <message>
        <source>注入辅助数据</source>
        <translation>Inject assistance data</translation>
    </message>
    <message>
        <source>文件不存在</source>
        <translation>File Missing</translation>
    </message>
    <message>
        <source>dll 文件不存在，请检查路径</source>
        <translation>The dll file is missing, please check the path</translation>
    </message>
    <message>
        <source>获取文件有效时间失败，错误码：</source>
        <translation>Reading the validity of the file failed, code: </translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>选择路径不存在</source>
        <translation>The chosen path does not exist</translation>
    </message>
    <message>
        <source>请选择正确的种子文件</source>
        <translation>Please choose a seed file</translation>
    </message>
    <message>
        <source>下载离线辅助数据失败！</source>
        <translation>Offline assistance download failed!</translation>
    </message>
    <message>
        <source>离线辅助数据下载成功(%1KB)</source>
        <translation>Offline assistance downloaded (%1KB)</translation>
    </message>
    <message>
        <source>请输入正确的UTC时间, 示例: 2025/03/21 06:00:00</source>
        <translation>Please enter a UTC time such as 2025/03/21 06:00:00</translation>
    </message>
    <message>
        <source>请先打开串口</source>
        <translation>Please open the serial port first</translation>
    </message>
    <message>
        <source>文件不存在，请检查路径</source>
        <translation>The file is missing, please check the path</translation>
    </message>
    <message>
        <source>PGNSS所有辅助数据注入成功！</source>
        <translation>All PGNSS assistance data injected!</translation>
    </message>
    <message>
        <source>PGNSS辅助数据注入成功 %1/%2!</source>
        <translation>PGNSS assistance data injected: %1/%2!</translation>
    </message>
    <message>
        <source>种子无效</source>
        <translation>Seed Not Valid</translation>
    </message>
    <message>
        <source>种子文件已失效，请更新</source>
        <translation>The seed file has expired, please update it</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>解析文件异常</source>
        <translation>Invalid file: it cannot be expanded</translation>
    </message>
    <message>
        <source>PGNSS注入位置 ACK超时</source>
        <translation>Inject PGNSS position: ACK timeout</translation>
    </message>
</context>
<context>
    <name>AssistOnline</name>
    <message>
        <source>在线辅助数据</source>
        <translation>Online Assistance Data</translation>
    </message>
    <message>
        <source>辅助星历</source>
        <translation>Assistance ephemeris</translation>
    </message>
    <message>
        <source>保存配置</source>
        <translation>Save settings</translation>
    </message>
    <message>
        <source>GNSS星座</source>
        <translation>GNSS constellations</translation>
    </message>
    <message>
        <source>辅助数据类型</source>
        <translation>Assistance data types</translation>
    </message>
    <message>
        <source>辅助时间</source>
        <translation>Assistance time</translation>
    </message>
    <message>
        <source>注入时间</source>
        <translation>Inject time</translation>
    </message>
    <message>
        <source>来源</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>系统UTC时间</source>
        <translation>System UTC time</translation>
    </message>
    <message>
        <source>辅助位置</source>
        <translation>Assistance position</translation>
    </message>
    <message>
        <source>经度</source>
        <translation>Lon</translation>
    </message>
    <message>
        <source>纬度</source>
        <translation>Lat</translation>
    </message>
    <message>
        <source>高度</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>注入位置</source>
        <translation>Inject position</translation>
    </message>
    <message>
        <source>数据注入</source>
        <translation>Data injection</translation>
    </message>
    <message>
        <source>模式</source>
        <translation>Mode</translation>
    </message>
    <message>
        <source>保持历史数据</source>
        <translation>Keep history data</translation>
    </message>
    <message>
        <source>清除历史数据</source>
        <translation>Clear history data</translation>
    </message>
    <message>
        <source>请求&amp;&amp;注入</source>
        <translation>Request &amp;&amp; inject</translation>
    </message>
    <message>
        <source>在线辅助数据下载失败!</source>
        <translation>Online assistance download failed!</translation>
    </message>
    <message>
        <source>在线辅助数据下载成功(%1KB)，准备注入</source>
        <translation>Online assistance downloaded (%1KB), injecting</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>请先打开串口</source>
        <translation>Please open the serial port first</translation>
    </message>
    <message>
        <source>AGNSS注入UTC时间组包失败！</source>
        <translation>Inject AGNSS UTC time: encoding failed! </translation>
    </message>
    <message>
        <source>AGNSS注入UTC时间 ACK超时</source>
        <translation>Inject AGNSS UTC time: ACK timeout</translation>
    </message>
    <message>
        <source>:AGNSS</source>
        <translation>AGNSS: </translation>
    </message>
    <message>
        <source>AGNSS所有辅助数据注入成功</source>
        <translation>All AGNSS assistance data injected</translation>
    </message>
    <message>
        <source>AGNSS辅助数据注入成功 %1/%2!</source>
        <translation>AGNSS assistance data injected: %1/%2!</translation>
    </message>
    <message>
        <source>AGNSS注入位置 ACK超时</source>
        <translation>Inject AGNSS position: ACK timeout</translation>
    </message>
</context>
<context>
    <name>BasicViewWin</name>
    <message>
        <source>经度(°): </source>
        <translation>Longitude (°): </translation>
    </message>
    <message>
        <source>纬度(°): </source>
        <translation>Latitude (°): </translation>
    </message>
    <message>
        <source>海拔(m ): </source>
        <translation>Altitude (m): </translation>
    </message>
    <message>
        <source>UTC时间 : </source>
        <translation>UTC time: </translation>
    </message>
    <message>
        <source>日  期  : </source>
        <translation>Date: </translation>
    </message>
    <message>
        <source>时区: </source>
        <translation>Time zone: </translation>
    </message>
</context>
<context>
    <name>CmdConfig</name>
    <message>
        <source>命令配置</source>
        <translation>Command Configuration</translation>
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
    <message>
        <source>总和:</source>
        <translation>Total:</translation>
    </message>
    <message>
        <source>(注：使用卫星数/跟踪卫星数/可视卫星数)</source>
        <translation>(Note: satellites used/tracked/visible)</translation>
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
        <translation>Custom Commands</translation>
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
    <message>
        <source>值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>TTFF</source>
        <translation>TTFF</translation>
    </message>
    <message>
        <source>经度</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>纬度</source>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>海拔高度</source>
        <translation>Altitude</translation>
    </message>
    <message>
        <source>UTC日期</source>
        <translation>UTC Date</translation>
    </message>
    <message>
        <source>UTC时间</source>
        <translation>UTC Time</translation>
    </message>
    <message>
        <source>定位模式</source>
        <translation>Fix Mode</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>航向</source>
        <translation>Heading</translation>
    </message>
    <message>
        <source>位置精度DOP</source>
        <translation>PDOP</translation>
    </message>
    <message>
        <source>水平精度DOP</source>
        <translation>HDOP</translation>
    </message>
    <message>
        <source>高程精度DOP</source>
        <translation>VDOP</translation>
    </message>
</context>
<context>
    <name>FetchNmea</name>
    <message>
        <source>提取NMEA</source>
        <translation>Extract NMEA</translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation>Choose file</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>选择路径不存在</source>
        <translation>The chosen path does not exist</translation>
    </message>
    <message>
        <source>正在解析</source>
        <translation>Extracting from </translation>
    </message>
    <message>
        <source>解析完成，耗时</source>
        <translation>Extraction finished, time: </translation>
    </message>
</context>
<context>
    <name>FirmwareLoad</name>
    <message>
        <source>读取版本号失败，请确认固件选择是否正确</source>
        <translation>Reading the version number failed; make sure that the right firmware is selected</translation>
    </message>
    <message>
        <source>固件加载失败，完成%1/%2条</source>
        <translation>Firmware load failed after %1/%2 records</translation>
    </message>
    <message>
        <source>固件加载成功</source>
        <translation>Firmware loaded</translation>
    </message>
    <message>
        <source>当前固件版本：</source>
        <translation>Present firmware version: </translation>
    </message>
    <message>
        <source>读取版本号失败</source>
        <translation>Reading the version number failed</translation>
    </message>
    <message>
        <source>ACK处理异常</source>
        <translation>ACK handling error</translation>
    </message>
    <message>
        <source>串口读取ACK数据失败</source>
        <translation>Reading the ACK from the port failed</translation>
    </message>
    <message>
        <source>固件加载失败，ACK值为</source>
        <translation>Firmware load failed, the ACK is </translation>
    </message>
    <message>
        <source>获取版本号长度异常，长度为</source>
        <translation>Invalid length of the version: </translation>
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
        <translation>History Information</translation>
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
    <message>
        <source>测试配置</source>
        <translation>Test configuration</translation>
    </message>
    <message>
        <source>参考位置</source>
        <translation>Reference position</translation>
    </message>
    <message>
        <source>经度:</source>
        <translation>Longitude:</translation>
    </message>
    <message>
        <source>纬度:</source>
        <translation>Latitude:</translation>
    </message>
    <message>
        <source>高度:</source>
        <translation>Altitude:</translation>
    </message>
    <message>
        <source>新增位置</source>
        <translation>Add position</translation>
    </message>
    <message>
        <source>冷启动参数</source>
        <translation>Cold start parameters</translation>
    </message>
    <message>
        <source>冷启动</source>
        <translation>Cold start</translation>
    </message>
    <message>
        <source>测试次数</source>
        <translation>Tests</translation>
    </message>
    <message>
        <source>定位超时(s)</source>
        <translation>Fix timeout (s)</translation>
    </message>
    <message>
        <source>定位间隔(s)</source>
        <translation>Interval (s)</translation>
    </message>
    <message>
        <source>跟踪时间(s)</source>
        <translation>Tracking time (s)</translation>
    </message>
    <message>
        <source>热启动参数</source>
        <translation>Hot start parameters</translation>
    </message>
    <message>
        <source>热启动</source>
        <translation>Hot start</translation>
    </message>
    <message>
        <source>开始测试</source>
        <translation>Start test</translation>
    </message>
    <message>
        <source>保存配置</source>
        <translation>Save configuration</translation>
    </message>
    <message>
        <source>保存测试结果</source>
        <translation>Save test results</translation>
    </message>
    <message>
        <source>测试结果</source>
        <translation>Test results</translation>
    </message>
    <message>
        <source>冷启动测试结果</source>
        <translation>Cold start results</translation>
    </message>
    <message>
        <source>定位次数</source>
        <translation>Fixes</translation>
    </message>
    <message>
        <source>成功率</source>
        <translation>Success rate</translation>
    </message>
    <message>
        <source>热启动测试结果</source>
        <translation>Hot start results</translation>
    </message>
    <message>
        <source>最新定位数据</source>
        <translation>Latest fix</translation>
    </message>
    <message>
        <source>日期</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>纬度</source>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>经度</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>高度</source>
        <translation>Altitude</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>卫星信息</source>
        <translation>Satellites</translation>
    </message>
    <message>
        <source>跟踪</source>
        <translation>Tracked</translation>
    </message>
    <message>
        <source>使用</source>
        <translation>Used</translation>
    </message>
    <message>
        <source>Kpi测试</source>
        <translation>KPI test</translation>
    </message>
    <message>
        <source>当前已经启动，请勿重复操作</source>
        <translation>Positioning is already running; do not start it again</translation>
    </message>
    <message>
        <source>请勾选要执行的测试</source>
        <translation>Please tick the tests to run</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>停止测试</source>
        <translation>Stop test</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>测试结果保存成功</source>
        <translation>Test results saved</translation>
    </message>
    <message>
        <source>测试配置保存成功</source>
        <translation>Test configuration saved</translation>
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
    <name>MsgViewRightWin</name>
    <message>
        <source>NMEA消息</source>
        <translation>NMEA message</translation>
    </message>
    <message>
        <source>%1消息</source>
        <translation>%1 message</translation>
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
    <message>
        <source>清空</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>跟随最新数据</source>
        <translation>Follow newest data</translation>
    </message>
    <message>
        <source>时间戳</source>
        <translation>Timestamp</translation>
    </message>
    <message>
        <source>数据类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>方向</source>
        <translation>Direction</translation>
    </message>
    <message>
        <source>子数据类型</source>
        <translation>Subtype</translation>
    </message>
    <message>
        <source>数据长度</source>
        <translation>Length</translation>
    </message>
</context>
<context>
    <name>PgnssItems</name>
    <message>
        <source>PGNSS GPS EPH文件 打开失败！</source>
        <translation>Opening the PGNSS GPS EPH file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GPS星历 组包失败！</source>
        <translation>Inject PGNSS GPS ephemeris: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GPS星历 ACK超时</source>
        <translation>Inject PGNSS GPS ephemeris: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS GLO EPH文件 打开失败！</source>
        <translation>Opening the PGNSS GLO EPH file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GLO星历 组包失败！</source>
        <translation>Inject PGNSS GLO ephemeris: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GLO星历 ACK超时</source>
        <translation>Inject PGNSS GLO ephemeris: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS BDS EPH文件 打开失败！</source>
        <translation>Opening the PGNSS BDS EPH file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入BDS星历 组包失败！</source>
        <translation>Inject PGNSS BDS ephemeris: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入BDS星历 ACK超时</source>
        <translation>Inject PGNSS BDS ephemeris: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS GAL EPH文件 打开失败！</source>
        <translation>Opening the PGNSS GAL EPH file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GAL星历 组包失败！</source>
        <translation>Inject PGNSS GAL ephemeris: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GAL星历 ACK超时</source>
        <translation>Inject PGNSS GAL ephemeris: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS QZS EPH文件 打开失败！</source>
        <translation>Opening the PGNSS QZS EPH file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入QZS星历 组包失败！</source>
        <translation>Inject PGNSS QZS ephemeris: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入QZS星历 ACK超时</source>
        <translation>Inject PGNSS QZS ephemeris: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS打开GPS UTC文件失败！</source>
        <translation>Opening the PGNSS GPS UTC file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GPS UTC模型组包失败！</source>
        <translation>Inject PGNSS GPS UTC model: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GPS UTC模型 ACK超时</source>
        <translation>Inject PGNSS GPS UTC model: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS打开GPS ION文件失败！</source>
        <translation>Opening the PGNSS GPS ION file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GPS ION数据组包失败！</source>
        <translation>Inject PGNSS GPS ION data: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GPS ION数据 ACK超时</source>
        <translation>Inject PGNSS GPS ION data: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS打开GPS RTI文件失败！</source>
        <translation>Opening the PGNSS GPS RTI file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GPS RTI数据组包失败！</source>
        <translation>Inject PGNSS GPS RTI data: encoding failed!</translation>
    </message>
    <message>
        <source>Pgnss注入GPS RTI数据 ACK超时</source>
        <translation>Inject Pgnss GPS RTI data: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS打开GLO RTI文件失败！</source>
        <translation>Opening the PGNSS GLO RTI file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GLO RTI数据组包失败！</source>
        <translation>Inject PGNSS GLO RTI data: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GLO RTI数据 ACK超时</source>
        <translation>Inject PGNSS GLO RTI data: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS打开GLO AUX文件失败！</source>
        <translation>Opening the PGNSS GLO AUX file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GLO AUX数据组包失败！</source>
        <translation>Inject PGNSS GLO AUX data: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入GLO AUX数据 ACK超时</source>
        <translation>Inject PGNSS GLO AUX data: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS打开BDS RTI文件失败！</source>
        <translation>Opening the PGNSS BDS RTI file failed!</translation>
    </message>
    <message>
        <source>PGNSS注入BDS RTI数据失败！</source>
        <translation>Inject PGNSS BDS RTI data failed!</translation>
    </message>
    <message>
        <source>PGNSS注入BDS RTI数据 ACK超时</source>
        <translation>Inject PGNSS BDS RTI data: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS注入GLO RTI数据失败！</source>
        <translation>Inject PGNSS GLO RTI data failed!</translation>
    </message>
    <message>
        <source>高精度电离层 组包失败！</source>
        <translation>Inject precise ionosphere: encoding failed!</translation>
    </message>
    <message>
        <source>高精度电离层 ACK超时</source>
        <translation>Inject precise ionosphere: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS注入UTC时间 组包失败！</source>
        <translation>Inject PGNSS UTC time: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入UTC时间 ACK超时</source>
        <translation>Inject PGNSS UTC time: ACK timeout</translation>
    </message>
    <message>
        <source>PGNSS</source>
        <translation>PGNSS: </translation>
    </message>
    <message>
        <source>PGNSS注入预测时间 组包失败!</source>
        <translation>Inject PGNSS reference time: encoding failed!</translation>
    </message>
    <message>
        <source>PGNSS注入预测时间 ACK超时</source>
        <translation>Inject PGNSS reference time: ACK timeout</translation>
    </message>
</context>
<context>
    <name>PositionInjection</name>
    <message>
        <source>请输入正确的经度数字</source>
        <translation>Please enter the longitude as a number</translation>
    </message>
    <message>
        <source>经度范围应为-180° - 180°</source>
        <translation>The longitude must lie within -180° - 180°</translation>
    </message>
    <message>
        <source>请输入正确的纬度数字</source>
        <translation>Please enter the latitude as a number</translation>
    </message>
    <message>
        <source>纬度范围应为-90° - 90°</source>
        <translation>The latitude must lie within -90° - 90°</translation>
    </message>
    <message>
        <source>请输入正确的高度数字</source>
        <translation>Please enter the altitude as a number</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
</context>
<context>
    <name>PositioningViewWin</name>
    <message>
        <source>定位轨迹</source>
        <translation>Position Track</translation>
    </message>
    <message>
        <source>Set Center Point Coordinates</source>
        <translation>Set Center Point Coordinates</translation>
    </message>
    <message>
        <source>Remove All Points</source>
        <translation>Remove All Points</translation>
    </message>
    <message>
        <source>Set Last Point As Center</source>
        <translation>Set Last Point As Center</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Zoom In</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Zoom Out</translation>
    </message>
    <message>
        <source>Count:</source>
        <translation>Count:</translation>
    </message>
</context>
<context>
    <name>ProductTest</name>
    <message>
        <source>产测视图</source>
        <translation>Production Test</translation>
    </message>
    <message>
        <source>串口</source>
        <translation>Serial Port</translation>
    </message>
    <message>
        <source>端口号</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>波特率</source>
        <translation>Baud rate</translation>
    </message>
    <message>
        <source>PN条码扫描</source>
        <translation>PN Bar Code Scan</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>载噪比门限标准设置</source>
        <translation>C/N0 Thresholds</translation>
    </message>
    <message>
        <source>GPS卫星载噪比门限</source>
        <translation>GPS C/N0 threshold</translation>
    </message>
    <message>
        <source>非GPS卫星载噪比门限</source>
        <translation>Non-GPS C/N0 threshold</translation>
    </message>
    <message>
        <source>固件</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>选择固件</source>
        <translation>Select Firmware</translation>
    </message>
    <message>
        <source>时间配置</source>
        <translation>Times</translation>
    </message>
    <message>
        <source>定位时间≤</source>
        <translation>Time to fix ≤</translation>
    </message>
    <message>
        <source>时间延迟</source>
        <translation>Delay</translation>
    </message>
    <message>
        <source>测试</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>开始测试</source>
        <translation>Start Test</translation>
    </message>
    <message>
        <source>停止测试</source>
        <translation>Stop Test</translation>
    </message>
    <message>
        <source>锁定配置</source>
        <translation>Lock settings</translation>
    </message>
    <message>
        <source>判定结果</source>
        <translation>Verdict</translation>
    </message>
    <message>
        <source>测试次数：</source>
        <translation>Tested: </translation>
    </message>
    <message>
        <source>合格次数：</source>
        <translation>Passed: </translation>
    </message>
    <message>
        <source>合格率：</source>
        <translation>Pass rate: </translation>
    </message>
    <message>
        <source>卫星信息[棕：GPS；红：BDS；绿：GLO；蓝：GAL；紫：QZS]</source>
        <translation>Satellites [GPS brown, BDS red, GLO green, GAL blue, QZS purple]</translation>
    </message>
    <message>
        <source>总计(跟踪数量/最强信号):</source>
        <translation>Totals (tracked/strongest):</translation>
    </message>
    <message>
        <source>总计：</source>
        <translation>Total: </translation>
    </message>
    <message>
        <source>GPS：</source>
        <translation>GPS: </translation>
    </message>
    <message>
        <source>BDS：</source>
        <translation>BDS: </translation>
    </message>
    <message>
        <source>GLO：</source>
        <translation>GLO: </translation>
    </message>
    <message>
        <source>GAL：</source>
        <translation>GAL: </translation>
    </message>
    <message>
        <source>QZS：</source>
        <translation>QZS: </translation>
    </message>
    <message>
        <source>测试日志[最新测试的数据在最后一行]</source>
        <translation>Test Log [the latest test is the last row]</translation>
    </message>
    <message>
        <source>结果保存路径：</source>
        <translation>Results saved in: </translation>
    </message>
    <message>
        <source>串口输出</source>
        <translation>Port Output</translation>
    </message>
    <message>
        <source>清除历史日志</source>
        <translation>Clear earlier output</translation>
    </message>
    <message>
        <source>系统状态</source>
        <translation>System Status</translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation>Select File</translation>
    </message>
    <message>
        <source>PASS通过</source>
        <translation>PASS</translation>
    </message>
    <message>
        <source>GPS载噪比小于门限值</source>
        <translation>GPS C/N0 is below its threshold</translation>
    </message>
    <message>
        <source>非GPS载噪比小于门限值</source>
        <translation>Non-GPS C/N0 is below its threshold</translation>
    </message>
    <message>
        <source>FAILED不通过</source>
        <translation>FAILED</translation>
    </message>
    <message>
        <source>次</source>
        <translation> times</translation>
    </message>
</context>
<context>
    <name>RecordConversions</name>
    <message>
        <source>无效</source>
        <translation>Invalid</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Autonomous</translation>
    </message>
    <message>
        <source>差分</source>
        <translation>Differential</translation>
    </message>
    <message>
        <source>估算</source>
        <translation>Estimated</translation>
    </message>
    <message>
        <source>手动</source>
        <translation>Manual</translation>
    </message>
    <message>
        <source>模拟</source>
        <translation>Simulated</translation>
    </message>
</context>
<context>
    <name>RefLocWin</name>
    <message>
        <source>点位名:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>经度:</source>
        <translation>Lon.:</translation>
    </message>
    <message>
        <source>纬度:</source>
        <translation>Lat.:</translation>
    </message>
    <message>
        <source>高度:</source>
        <translation>Alt.:</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>参考点位保存成功</source>
        <translation>Reference point saved</translation>
    </message>
</context>
<context>
    <name>SatellitesPosViewWin</name>
    <message>
        <source>卫星分布</source>
        <translation>Satellite Distribution</translation>
    </message>
    <message>
        <source>Clear CN0 Data</source>
        <translation>Clear CN0 Data</translation>
    </message>
</context>
<context>
    <name>SenceReplay</name>
    <message>
        <source>场景库回放</source>
        <translation>Scene Replay</translation>
    </message>
    <message>
        <source>场景库路径：</source>
        <translation>Scene library:</translation>
    </message>
    <message>
        <source>选择文件路径</source>
        <translation>Choose folder</translation>
    </message>
    <message>
        <source>场景起始时间</source>
        <translation>Start time of the scene</translation>
    </message>
    <message>
        <source>UTC时间：</source>
        <translation>UTC time:</translation>
    </message>
    <message>
        <source>Unix时间戳：</source>
        <translation>Unix time:</translation>
    </message>
    <message>
        <source>注入时间</source>
        <translation>Inject time</translation>
    </message>
    <message>
        <source>场景起始位置</source>
        <translation>Start position of the scene</translation>
    </message>
    <message>
        <source>注入位置</source>
        <translation>Inject position</translation>
    </message>
    <message>
        <source>辅助数据注入</source>
        <translation>Assistance data</translation>
    </message>
    <message>
        <source>注入电离层参数</source>
        <translation>Inject ionosphere</translation>
    </message>
    <message>
        <source>注入星历</source>
        <translation>Inject ephemeris</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>选择路径不存在!</source>
        <translation>The chosen path does not exist!</translation>
    </message>
    <message>
        <source>场景json文件打开失败！</source>
        <translation>Opening the json file of the scenes failed!</translation>
    </message>
    <message>
        <source>场景json文件内容为空！</source>
        <translation>The json file of the scenes is empty!</translation>
    </message>
    <message>
        <source>PGNSS注入位置 ACK超时</source>
        <translation>Inject PGNSS position: ACK timeout</translation>
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
    <name>SetCenterPointWin</name>
    <message>
        <source>Set Center Point Coordinates</source>
        <translation>Set Center Point Coordinates</translation>
    </message>
    <message>
        <source>Set to Average</source>
        <translation>Set to Average</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>Latitudinal</source>
        <translation>Latitudinal</translation>
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
    <name>StationPort</name>
    <message>
        <source>串口打开失败，请确认串口存在且未被占用</source>
        <translation>: the port cannot be opened; make sure that it exists and is not in use</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>打开文件失败</source>
        <translation>Opening the file failed</translation>
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
    <name>UnitReport</name>
    <message>
        <source>PASS</source>
        <translation>PASS</translation>
    </message>
    <message>
        <source>FAILED</source>
        <translation>FAILED</translation>
    </message>
    <message>
        <source>当前系统配置的GPS CN0载造比允收值(dB)设定为：%1，且GPS通道测试配置为%2；BDS/GLONASS CN0载造比允收值(dB)设定为：%3； 且BDS/GLONASS通道测试配置为%4</source>
        <translation>Accepted GPS C/N0 (dB) in the present settings: %1, and the test of the GPS channel is set to %2; accepted BDS/GLONASS C/N0 (dB): %3; and the test of the BDS/GLONASS channel is set to %4</translation>
    </message>
    <message>
        <source>测试定位的时间设置为：</source>
        <translation>The time for positioning is set to: </translation>
    </message>
    <message>
        <source> 秒。</source>
        <translation> s.</translation>
    </message>
    <message>
        <source>如下是产品编号 </source>
        <translation>Here follow the test data of product number </translation>
    </message>
    <message>
        <source>的测试数据。</source>
        <translation>.</translation>
    </message>
    <message>
        <source>经测试，产品的定位时间 TTFF = </source>
        <translation>Tested, the product&apos;s time to first fix TTFF = </translation>
    </message>
    <message>
        <source> 秒</source>
        <translation> s</translation>
    </message>
    <message>
        <source>在当前信号输入环境和测试阈值的设置下，软件部分的测试结论为： </source>
        <translation>With the present signals and the thresholds that are set, the verdict of the test is: </translation>
    </message>
</context>
<context>
    <name>VersionLoad</name>
    <message>
        <source>固件加载</source>
        <translation>Firmware Load</translation>
    </message>
    <message>
        <source>开始烧录</source>
        <translation>Load</translation>
    </message>
    <message>
        <source>选择固件</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>烧录状态</source>
        <translation>Load state</translation>
    </message>
    <message>
        <source>加载进度：</source>
        <translation>Progress: </translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation>Select File</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>选择路径不存在</source>
        <translation>The selected path does not exist</translation>
    </message>
</context>
</TS>
