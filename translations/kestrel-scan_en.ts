<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>Batch</name>
    <message>
        <source>没有找到扫描仪</source>
        <translation>No scanner was found</translation>
    </message>
    <message>
        <source>没有名为 button%1 的模板</source>
        <translation>There is no template named button%1</translation>
    </message>
    <message>
        <source>%1  %2 × %3 像素，%4 × %5 毫米</source>
        <translation>%1  %2 × %3 pixels, %4 × %5 mm</translation>
    </message>
    <message>
        <source>无法打开 %1：%2</source>
        <translation>Cannot open %1: %2</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>列出扫描仪，然后结束</source>
        <translation>list the scanners and stop</translation>
    </message>
    <message>
        <source>使用这台扫描仪（SANE 设备名）</source>
        <translation>use this scanner (SANE device name)</translation>
    </message>
    <message>
        <source>不打开窗口，扫描并把图像存入文件夹 DIR</source>
        <translation>scan without a window and put the images into the folder DIR</translation>
    </message>
    <message>
        <source>与 --batch 一起：另外保存为 PDF 文件</source>
        <translation>with --batch: also save a PDF file</translation>
    </message>
    <message>
        <source>与 --batch 一起：使用扫描仪按钮 N 的模板（buttonN）</source>
        <translation>with --batch: use the template of the scanner button N (buttonN)</translation>
    </message>
    <message>
        <source>与 --batch 一起：保留（keep）或去除（remove）空白页</source>
        <translation>with --batch: keep or remove blank pages</translation>
    </message>
    <message>
        <source>设置文件所在的文件夹</source>
        <translation>folder of the settings files</translation>
    </message>
    <message>
        <source>使用随附的模拟扫描仪，不需要真实设备</source>
        <translation>use the simulated scanners, no real one is needed</translation>
    </message>
    <message>
        <source>只能选择一种运行方式</source>
        <translation>Only one way of running can be chosen</translation>
    </message>
    <message>
        <source>没有给出文件夹</source>
        <translation>No folder was given</translation>
    </message>
    <message>
        <source>--%1 只能与 --batch 一起使用</source>
        <translation>--%1 can only be used with --batch</translation>
    </message>
    <message>
        <source>--button 需要一个按钮号</source>
        <translation>--button needs the number of a button</translation>
    </message>
    <message>
        <source>--blank-pages 只能是 keep 或 remove</source>
        <translation>--blank-pages can only be keep or remove</translation>
    </message>
    <message>
        <source>--scene-dir 要与 --scene 一起使用，且要有此场景</source>
        <translation>--scene-dir goes with --scene, and the scene has to exist</translation>
    </message>
    <message>
        <source>扫描文档，保存为 PDF、PNG 或 TIFF。</source>
        <translation>Scans documents and saves them as PDF, PNG or TIFF.</translation>
    </message>
    <message>
        <source>不认识的参数：%1</source>
        <translation>Unknown argument: %1</translation>
    </message>
</context>
<context>
    <name>FrameProblem</name>
    <message>
        <source>扫描仪分三次传送红、绿、蓝三色，本程序不支持这种扫描仪</source>
        <translation>The scanner sends red, green and blue in three passes, which is not supported</translation>
    </message>
    <message>
        <source>扫描仪送来的图像种类未知</source>
        <translation>The scanner sends images of an unknown kind</translation>
    </message>
    <message>
        <source>不支持扫描仪送来的色彩位数</source>
        <translation>The color depth of the scanner is not supported</translation>
    </message>
    <message>
        <source>扫描仪给出的图像尺寸有误</source>
        <translation>The scanner gives a wrong image size</translation>
    </message>
    <message>
        <source>图像过大，请降低分辨率或缩小扫描范围</source>
        <translation>The image is too large. Choose a lower resolution or a smaller scan area</translation>
    </message>
</context>
<context>
    <name>PageExport</name>
    <message>
        <source>无法写入文件 %1：%2</source>
        <translation>Cannot write the file %1: %2</translation>
    </message>
    <message>
        <source>无法读取已扫描的图像 %1</source>
        <translation>Cannot read the scanned image %1</translation>
    </message>
    <message>
        <source>PDF 文档 (*.pdf)</source>
        <translation>PDF documents (*.pdf)</translation>
    </message>
    <message>
        <source>PNG 图像 (*.png)</source>
        <translation>PNG images (*.png)</translation>
    </message>
    <message>
        <source>TIFF 图像 (*.tif *.tiff)</source>
        <translation>TIFF images (*.tif *.tiff)</translation>
    </message>
    <message>
        <source>没有可以保存的图像</source>
        <translation>There is no image to save</translation>
    </message>
</context>
<context>
    <name>PageStore</name>
    <message>
        <source>无法创建文件夹 %1</source>
        <translation>Cannot create the folder %1</translation>
    </message>
    <message>
        <source>无法写入文件 %1：%2</source>
        <translation>Cannot write the file %1: %2</translation>
    </message>
</context>
<context>
    <name>ScanPlan</name>
    <message>
        <source>文档进纸器</source>
        <translation>Feeder</translation>
    </message>
    <message>
        <source>平板</source>
        <translation>Flatbed</translation>
    </message>
    <message>
        <source>自动选择纸张来源</source>
        <translation>Automatic source</translation>
    </message>
    <message>
        <source>双面</source>
        <translation>Both sides</translation>
    </message>
    <message>
        <source>单面</source>
        <translation>One side</translation>
    </message>
    <message>
        <source>拆分图像</source>
        <translation>Split images</translation>
    </message>
    <message>
        <source>间隔 %1 秒</source>
        <translation>Interval of %1 s</translation>
    </message>
</context>
<context>
    <name>SimulatorEnv</name>
    <message>
        <source>没有安装模拟扫描仪</source>
        <translation>The simulated scanner is not installed</translation>
    </message>
</context>
<context>
    <name>StatusText</name>
    <message>
        <source>正常</source>
        <translation>All is well</translation>
    </message>
    <message>
        <source>扫描仪不支持此操作</source>
        <translation>The scanner does not support this</translation>
    </message>
    <message>
        <source>扫描已取消</source>
        <translation>The scan was cancelled</translation>
    </message>
    <message>
        <source>扫描仪忙，请稍后再试</source>
        <translation>The scanner is busy. Try again later</translation>
    </message>
    <message>
        <source>扫描仪不接受当前设置</source>
        <translation>The scanner does not accept these settings</translation>
    </message>
    <message>
        <source>扫描仪没有送来图像数据</source>
        <translation>The scanner sent no image</translation>
    </message>
    <message>
        <source>文档进纸器卡纸，请取出纸张后再试</source>
        <translation>Paper jam in the feeder. Take the paper out and try again</translation>
    </message>
    <message>
        <source>没有纸张，请放入纸张后再试</source>
        <translation>There is no paper. Insert some and try again</translation>
    </message>
    <message>
        <source>扫描仪的盖子被打开，请合上后再试</source>
        <translation>The cover of the scanner is open. Close it and try again</translation>
    </message>
    <message>
        <source>与扫描仪通信出错，扫描仪可能已断开</source>
        <translation>The connection to the scanner failed; it may be unplugged</translation>
    </message>
    <message>
        <source>内存不足</source>
        <translation>Out of memory</translation>
    </message>
    <message>
        <source>没有使用这台扫描仪的权限</source>
        <translation>You may not use this scanner</translation>
    </message>
    <message>
        <source>扫描仪报告未知状态（%1）</source>
        <translation>The scanner reports an unknown status (%1)</translation>
    </message>
    <message>
        <source>没有这台扫描仪，或者它已断开</source>
        <translation>There is no such scanner, or it is unplugged</translation>
    </message>
</context>
<context>
    <name>kestrel::MainWindow</name>
    <message>
        <source>扫描</source>
        <translation>Scan</translation>
    </message>
    <message>
        <source>正在扫描第 %1 张图像</source>
        <translation>Scanning image %1</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Tools</translation>
    </message>
    <message>
        <source>扫描仪</source>
        <translation>Scanner</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>重新查找扫描仪</source>
        <translation>Look for scanners again</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>扫描设置</source>
        <translation>Scan settings</translation>
    </message>
    <message>
        <source>开始扫描</source>
        <translation>Start scanning</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>停止扫描</source>
        <translation>Stop scanning</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>保存全部页面</source>
        <translation>Save all pages</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>删除选中的页面</source>
        <translation>Delete the selected pages</translation>
    </message>
    <message>
        <source>页面列表</source>
        <translation>List of pages</translation>
    </message>
    <message>
        <source>扫描进度</source>
        <translation>Scan progress</translation>
    </message>
    <message>
        <source>没有打开扫描仪</source>
        <translation>No scanner is open</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>有 %1 页尚未保存。放弃这些页面吗？</source>
        <translation>Pages not saved: %1. Discard them?</translation>
    </message>
    <message>
        <source>文件 %1 已存在。替换它吗？</source>
        <translation>The file %1 exists. Replace it?</translation>
    </message>
    <message>
        <source>%1 等 %2 个文件已存在。替换它们吗？</source>
        <translation>Files that exist: %2, among them %1. Replace them?</translation>
    </message>
    <message>
        <source>正在保存…</source>
        <translation>Saving…</translation>
    </message>
    <message>
        <source>已保存到 %1</source>
        <translation>Saved to %1</translation>
    </message>
    <message>
        <source>正在查找扫描仪…</source>
        <translation>Looking for scanners…</translation>
    </message>
    <message>
        <source>查找扫描仪失败：%1</source>
        <translation>Looking for scanners failed: %1</translation>
    </message>
    <message>
        <source>没有找到扫描仪。请接通电源和电缆，然后点“刷新”。</source>
        <translation>No scanner was found. Check power and cable, then click “Refresh”.</translation>
    </message>
    <message>
        <source>%1，序列号 %2</source>
        <translation>%1, serial number %2</translation>
    </message>
    <message>
        <source>%1 - 扫描</source>
        <translation>%1 - Scan</translation>
    </message>
    <message>
        <source>无法打开 %1：%2</source>
        <translation>Cannot open %1: %2</translation>
    </message>
    <message>
        <source>正在启动扫描仪…</source>
        <translation>Starting the scanner…</translation>
    </message>
    <message>
        <source>正在停止…</source>
        <translation>Stopping…</translation>
    </message>
    <message>
        <source>已扫描 %1 张图像</source>
        <translation>Images scanned: %1</translation>
    </message>
    <message>
        <source>扫描中断：%1（已保留 %2 张图像）</source>
        <translation>The scan ended early: %1 (images kept: %2)</translation>
    </message>
    <message>
        <source>请放好下一页，%1 秒后继续扫描；点“取消”结束</source>
        <translation>Place the next page, scanning in %1 s; “Cancel” ends</translation>
    </message>
</context>
<context>
    <name>kestrel::MessageBar</name>
    <message>
        <source>关闭消息</source>
        <translation>Close the message</translation>
    </message>
</context>
<context>
    <name>kestrel::PageList</name>
    <message>
        <source>第 %1 页</source>
        <translation>Page %1</translation>
    </message>
    <message>
        <source>%1 × %2 像素，%3 dpi，%4 × %5 毫米</source>
        <translation>%1 × %2 pixels, %3 dpi, %4 × %5 mm</translation>
    </message>
</context>
<context>
    <name>kestrel::PageView</name>
    <message>
        <source>页面</source>
        <translation>Page</translation>
    </message>
    <message>
        <source>还没有页面

选择扫描仪，在“设置”中调整，然后点“扫描”</source>
        <translation>No pages yet

Choose a scanner, adjust it in “Settings”, then click “Scan”</translation>
    </message>
</context>
<context>
    <name>kestrel::Screenshots</name>
    <message>
        <source>无法完成截图：%1</source>
        <translation>The screenshots failed: %1</translation>
    </message>
</context>
</TS>
