<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>AddUserTemplate</name>
    <message>
        <source>模板名称</source>
        <translation>Template name</translation>
    </message>
    <message>
        <source>使用者模板名称 （不超过30个字符）</source>
        <translation>Name of the template (up to 30 characters)</translation>
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
        <source>文件命名长度不能超过%d个字符</source>
        <translation>A name has at most %d characters</translation>
    </message>
    <message>
        <source>文件名字不能含有&quot;%c&quot;</source>
        <translation>A name cannot contain &quot;%c&quot;</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Note</translation>
    </message>
</context>
<context>
    <name>CustomResolution</name>
    <message>
        <source>自订大小</source>
        <translation>Custom resolution</translation>
    </message>
    <message>
        <source>[ 范围：72 ～ 600 dpi ]</source>
        <translation>[ Range: 72 to 600 dpi ]</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>Change</translation>
    </message>
    <message>
        <source>[ 范围：72 ～ %1 dpi ]</source>
        <translation>[ Range: 72 to %1 dpi ]</translation>
    </message>
    <message>
        <source>分辨率（dpi）</source>
        <translation>Resolution in dpi</translation>
    </message>
</context>
<context>
    <name>EditTemplate</name>
    <message>
        <source>编辑使用者设置</source>
        <translation>Edit templates</translation>
    </message>
    <message>
        <source>使用者设置</source>
        <translation>Template</translation>
    </message>
    <message>
        <source>自订</source>
        <translatorcomment>Stands in the settings file, too, and stays as it is there.</translatorcomment>
        <translation>自订</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>修改名称</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>重设</source>
        <translation>Remove all</translation>
    </message>
    <message>
        <source>离开</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>已存在当前模板</source>
        <translation>There is a template of this name already</translation>
    </message>
</context>
<context>
    <name>KestrelSetting</name>
    <message>
        <source>扫描设置</source>
        <translation>Scan settings</translation>
    </message>
    <message>
        <source>图像</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>正面自动彩色侦测</source>
        <translation>Auto color, front</translation>
    </message>
    <message>
        <source>扫描彩色正面</source>
        <translation>Scan front in color</translation>
    </message>
    <message>
        <source>彩色正面</source>
        <translation>Color front</translation>
    </message>
    <message>
        <source>扫描灰阶正面</source>
        <translation>Scan front in gray</translation>
    </message>
    <message>
        <source>灰阶正面</source>
        <translation>Gray front</translation>
    </message>
    <message>
        <source>扫描黑白正面</source>
        <translation>Scan front in black and white</translation>
    </message>
    <message>
        <source>黑白正面</source>
        <translation>B/W front</translation>
    </message>
    <message>
        <source>背面自动彩色侦测</source>
        <translation>Auto color, back</translation>
    </message>
    <message>
        <source>扫描彩色背面</source>
        <translation>Scan back in color</translation>
    </message>
    <message>
        <source>彩色背面</source>
        <translation>Color back</translation>
    </message>
    <message>
        <source>扫描灰阶背面</source>
        <translation>Scan back in gray</translation>
    </message>
    <message>
        <source>灰阶背面</source>
        <translation>Gray back</translation>
    </message>
    <message>
        <source>扫描黑白背面</source>
        <translation>Scan back in black and white</translation>
    </message>
    <message>
        <source>黑白背面</source>
        <translation>B/W back</translation>
    </message>
    <message>
        <source>纸张来源：</source>
        <translation>Source:</translation>
    </message>
    <message>
        <source>纸张来源</source>
        <translation>Paper source</translation>
    </message>
    <message>
        <source>分辨率：</source>
        <translation>Resolution:</translation>
    </message>
    <message>
        <source>分辨率</source>
        <translation>Resolution</translation>
    </message>
    <message>
        <source>75</source>
        <translation>75</translation>
    </message>
    <message>
        <source>100</source>
        <translation>100</translation>
    </message>
    <message>
        <source>150</source>
        <translation>150</translation>
    </message>
    <message>
        <source>200</source>
        <translation>200</translation>
    </message>
    <message>
        <source>300</source>
        <translation>300</translation>
    </message>
    <message>
        <source>400</source>
        <translation>400</translation>
    </message>
    <message>
        <source>600</source>
        <translation>600</translation>
    </message>
    <message>
        <source>自定义分辨率</source>
        <translation>Custom resolution</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>使用者设置</source>
        <translation>Template</translation>
    </message>
    <message>
        <source>自订</source>
        <translatorcomment>Stands in the settings file, too, and stays as it is there.</translatorcomment>
        <translation>自订</translation>
    </message>
    <message>
        <source>使用者设置...</source>
        <translation>Templates...</translation>
    </message>
    <message>
        <source>测试按钮</source>
        <translation>Test button</translation>
    </message>
    <message>
        <source>亮     度 ：</source>
        <translation>Brightness:</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>亮度值</source>
        <translation>Brightness value</translation>
    </message>
    <message>
        <source>对 比 度 ：</source>
        <translation>Contrast:</translation>
    </message>
    <message>
        <source>对比度</source>
        <translation>Contrast</translation>
    </message>
    <message>
        <source>对比度值</source>
        <translation>Contrast value</translation>
    </message>
    <message>
        <source>Gamma：</source>
        <translation>Gamma:</translation>
    </message>
    <message>
        <source>Gamma</source>
        <translation>Gamma</translation>
    </message>
    <message>
        <source>Gamma 值</source>
        <translation>Gamma value</translation>
    </message>
    <message>
        <source>色彩校正：</source>
        <translation>Correction:</translation>
    </message>
    <message>
        <source>色彩校正</source>
        <translation>Color correction</translation>
    </message>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>图文混合</source>
        <translation>Text and photo</translation>
    </message>
    <message>
        <source>文本</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Photo</translation>
    </message>
    <message>
        <source>公文模式</source>
        <translation>Official document</translation>
    </message>
    <message>
        <source>文件类型：</source>
        <translation>Document:</translation>
    </message>
    <message>
        <source>文件类型</source>
        <translation>Document type</translation>
    </message>
    <message>
        <source>普通</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>阈值：</source>
        <translation>Threshold:</translation>
    </message>
    <message>
        <source>阈值</source>
        <translation>Threshold</translation>
    </message>
    <message>
        <source>阈值数值</source>
        <translation>Threshold value</translation>
    </message>
    <message>
        <source>二值化：</source>
        <translation>Binarize:</translation>
    </message>
    <message>
        <source>二值化</source>
        <translation>Binarization</translation>
    </message>
    <message>
        <source>动态阈值</source>
        <translation>Dynamic</translation>
    </message>
    <message>
        <source>固定处理</source>
        <translation>Fixed</translation>
    </message>
    <message>
        <source>扩散</source>
        <translation>Diffusion</translation>
    </message>
    <message>
        <source>灵敏度：</source>
        <translation>Sensitivity:</translation>
    </message>
    <message>
        <source>二值化灵敏度</source>
        <translation>Binarization sensitivity</translation>
    </message>
    <message>
        <source>二值化灵敏度值</source>
        <translation>Binarization sensitivity value</translation>
    </message>
    <message>
        <source>黑白反相：</source>
        <translation>Inversion:</translation>
    </message>
    <message>
        <source>黑白反相</source>
        <translation>Black and white inversion</translation>
    </message>
    <message>
        <source>白底黑字</source>
        <translation>Black on white</translation>
    </message>
    <message>
        <source>黑底白字</source>
        <translation>White on black</translation>
    </message>
    <message>
        <source>自动彩色侦测</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>正面彩色侦测设置</source>
        <translation>Color detection, front</translation>
    </message>
    <message>
        <source>非彩色选项：</source>
        <translation>Not in color:</translation>
    </message>
    <message>
        <source>正面非彩色选项</source>
        <translation>Front without color becomes</translation>
    </message>
    <message>
        <source>黑白</source>
        <translation>Black and white</translation>
    </message>
    <message>
        <source>灰阶</source>
        <translation>Gray</translation>
    </message>
    <message>
        <source>灵&#x3000;敏&#x3000;度：</source>
        <translation>Sensitivity:</translation>
    </message>
    <message>
        <source>正面彩色侦测灵敏度</source>
        <translation>Front color sensitivity</translation>
    </message>
    <message>
        <source>正面彩色侦测灵敏度值</source>
        <translation>Front color sensitivity value</translation>
    </message>
    <message>
        <source>模&#x3000;&#x3000;&#x3000;式：</source>
        <translation>Mode:</translation>
    </message>
    <message>
        <source>正面彩色侦测模式</source>
        <translation>Front color detection mode</translation>
    </message>
    <message>
        <source>忽略纸张颜色</source>
        <translation>Ignore paper color</translation>
    </message>
    <message>
        <source>背面彩色侦测设置</source>
        <translation>Color detection, back</translation>
    </message>
    <message>
        <source>背面非彩色选项</source>
        <translation>Back without color becomes</translation>
    </message>
    <message>
        <source>背面彩色侦测灵敏度</source>
        <translation>Back color sensitivity</translation>
    </message>
    <message>
        <source>背面彩色侦测灵敏度值</source>
        <translation>Back color sensitivity value</translation>
    </message>
    <message>
        <source>背面彩色侦测模式</source>
        <translation>Back color detection mode</translation>
    </message>
    <message>
        <source>滤色</source>
        <translation>Dropout</translation>
    </message>
    <message>
        <source>滤色彩色正面</source>
        <translation>Dropout color front</translation>
    </message>
    <message>
        <source>滤色灰阶正面</source>
        <translation>Dropout gray front</translation>
    </message>
    <message>
        <source>滤色黑白正面</source>
        <translation>Dropout black and white front</translation>
    </message>
    <message>
        <source>滤色彩色背面</source>
        <translation>Dropout color back</translation>
    </message>
    <message>
        <source>滤色灰阶背面</source>
        <translation>Dropout gray back</translation>
    </message>
    <message>
        <source>滤色黑白背面</source>
        <translation>Dropout black and white back</translation>
    </message>
    <message>
        <source>欲滤除的颜色：</source>
        <translation>Color to drop:</translation>
    </message>
    <message>
        <source>欲滤除的颜色</source>
        <translation>Color to drop</translation>
    </message>
    <message>
        <source>红色</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>绿色</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>蓝色</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>进阶处理</source>
        <translation>Advanced</translation>
    </message>
    <message>
        <source>模式：</source>
        <translation>Mode:</translation>
    </message>
    <message>
        <source>进阶滤色模式</source>
        <translation>Advanced dropout mode</translation>
    </message>
    <message>
        <source>红色：</source>
        <translation>Red:</translation>
    </message>
    <message>
        <source>绿色：</source>
        <translation>Green:</translation>
    </message>
    <message>
        <source>蓝色：</source>
        <translation>Blue:</translation>
    </message>
    <message>
        <source>筛选阈值：</source>
        <translation>Threshold:</translation>
    </message>
    <message>
        <source>筛选阈值</source>
        <translation>Dropout threshold</translation>
    </message>
    <message>
        <source>筛选阈值数值</source>
        <translation>Dropout threshold value</translation>
    </message>
    <message>
        <source>纸张</source>
        <translation>Paper</translation>
    </message>
    <message>
        <source>裁切：</source>
        <translation>Crop:</translation>
    </message>
    <message>
        <source>裁切</source>
        <translation>Crop</translation>
    </message>
    <message>
        <source>固定尺寸</source>
        <translation>Fixed size</translation>
    </message>
    <message>
        <source>长纸张扫描</source>
        <translation>Long paper</translation>
    </message>
    <message>
        <source>单位：</source>
        <translation>Unit:</translation>
    </message>
    <message>
        <source>长度单位</source>
        <translation>Unit of length</translation>
    </message>
    <message>
        <source>毫米</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>扫描范围：</source>
        <translation>Scan area:</translation>
    </message>
    <message>
        <source>扫描范围</source>
        <translation>Scan area</translation>
    </message>
    <message>
        <source>自定义扫描范围</source>
        <translation>Custom scan area</translation>
    </message>
    <message>
        <source> ...</source>
        <translation> ...</translation>
    </message>
    <message>
        <source>直式</source>
        <translation>Portrait</translation>
    </message>
    <message>
        <source>横式</source>
        <translation>Landscape</translation>
    </message>
    <message>
        <source>置中</source>
        <translation>Centered</translation>
    </message>
    <message>
        <source>X偏移量：</source>
        <translation>X offset:</translation>
    </message>
    <message>
        <source>扫描区域 X 偏移量</source>
        <translation>Scan area X offset</translation>
    </message>
    <message>
        <source>Y偏移量：</source>
        <translation>Y offset:</translation>
    </message>
    <message>
        <source>扫描区域 Y 偏移量</source>
        <translation>Scan area Y offset</translation>
    </message>
    <message>
        <source>宽度：</source>
        <translation>Width:</translation>
    </message>
    <message>
        <source>扫描区域宽度</source>
        <translation>Scan area width</translation>
    </message>
    <message>
        <source>高度：</source>
        <translation>Height:</translation>
    </message>
    <message>
        <source>扫描区域高度</source>
        <translation>Scan area height</translation>
    </message>
    <message>
        <source>裁切调整：</source>
        <translation>Adjust:</translation>
    </message>
    <message>
        <source>上：</source>
        <translation>Top:</translation>
    </message>
    <message>
        <source>裁切调整上</source>
        <translation>Crop adjustment at the top</translation>
    </message>
    <message>
        <source>下：</source>
        <translation>Bottom:</translation>
    </message>
    <message>
        <source>裁切调整下</source>
        <translation>Crop adjustment at the bottom</translation>
    </message>
    <message>
        <source>左：</source>
        <translation>Left:</translation>
    </message>
    <message>
        <source>裁切调整左</source>
        <translation>Crop adjustment on the left</translation>
    </message>
    <message>
        <source>右：</source>
        <translation>Right:</translation>
    </message>
    <message>
        <source>裁切调整右</source>
        <translation>Crop adjustment on the right</translation>
    </message>
    <message>
        <source>背景设置：</source>
        <translation>Background:</translation>
    </message>
    <message>
        <source>背景设置</source>
        <translation>Background</translation>
    </message>
    <message>
        <source>黑色背景</source>
        <translation>Black</translation>
    </message>
    <message>
        <source>白色背景</source>
        <translation>White</translation>
    </message>
    <message>
        <source>进纸</source>
        <translation>Feeding</translation>
    </message>
    <message>
        <source>预先进纸</source>
        <translation>Pre-feed</translation>
    </message>
    <message>
        <source>预先进纸时间（秒）</source>
        <translation>Pre-feed time in seconds</translation>
    </message>
    <message>
        <source>秒</source>
        <translation>s</translation>
    </message>
    <message>
        <source>平板扫描间隔：</source>
        <translation>Flatbed interval:</translation>
    </message>
    <message>
        <source>平板扫描间隔（秒）</source>
        <translation>Flatbed interval in seconds</translation>
    </message>
    <message>
        <source>平板扫描间隔值（秒）</source>
        <translation>Flatbed interval value in seconds</translation>
    </message>
    <message>
        <source>重张检测</source>
        <translation>Multifeed</translation>
    </message>
    <message>
        <source>重叠进纸侦测</source>
        <translation>Multifeed detection</translation>
    </message>
    <message>
        <source>超声波侦测</source>
        <translation>Ultrasonic detection</translation>
    </message>
    <message>
        <source>多余长度侦测：</source>
        <translation>Excess length:</translation>
    </message>
    <message>
        <source>多余长度</source>
        <translation>Excess length</translation>
    </message>
    <message>
        <source>多余长度单位</source>
        <translation>Unit of excess length</translation>
    </message>
    <message>
        <source>重叠进纸时，停止扫描</source>
        <translation>Stop scanning after a multifeed</translation>
    </message>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>预览图像</source>
        <translation>Preview picture</translation>
    </message>
    <message>
        <source>预览彩色正面</source>
        <translation>Preview color front</translation>
    </message>
    <message>
        <source>预览灰阶正面</source>
        <translation>Preview gray front</translation>
    </message>
    <message>
        <source>预览黑白正面</source>
        <translation>Preview black and white front</translation>
    </message>
    <message>
        <source>预览彩色背面</source>
        <translation>Preview color back</translation>
    </message>
    <message>
        <source>预览灰阶背面</source>
        <translation>Preview gray back</translation>
    </message>
    <message>
        <source>预览黑白背面</source>
        <translation>Preview black and white back</translation>
    </message>
    <message>
        <source>预览扫描范围</source>
        <translation>Preview scan area</translation>
    </message>
    <message>
        <source>X 偏移量：</source>
        <translation>X offset:</translation>
    </message>
    <message>
        <source>预览区域 X 偏移量</source>
        <translation>Preview area X offset</translation>
    </message>
    <message>
        <source>Y 偏移量：</source>
        <translation>Y offset:</translation>
    </message>
    <message>
        <source>预览区域 Y 偏移量</source>
        <translation>Preview area Y offset</translation>
    </message>
    <message>
        <source>预览区域宽度</source>
        <translation>Preview area width</translation>
    </message>
    <message>
        <source>预览区域高度</source>
        <translation>Preview area height</translation>
    </message>
    <message>
        <source>预览长度单位</source>
        <translation>Preview unit of length</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>More</translation>
    </message>
    <message>
        <source>旋转图像</source>
        <translation>Rotation</translation>
    </message>
    <message>
        <source>旋转角度：</source>
        <translation>Angle:</translation>
    </message>
    <message>
        <source>旋转角度</source>
        <translation>Rotation angle</translation>
    </message>
    <message>
        <source>顺时针90度</source>
        <translation>90° clockwise</translation>
    </message>
    <message>
        <source>180度</source>
        <translation>180°</translation>
    </message>
    <message>
        <source>逆时针90度</source>
        <translation>90° counterclockwise</translation>
    </message>
    <message>
        <source>自动翻转</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>自动翻转模式</source>
        <translation>Auto mode</translation>
    </message>
    <message>
        <source>快速</source>
        <translation>Fast</translation>
    </message>
    <message>
        <source>全文本</source>
        <translation>Full text</translation>
    </message>
    <message>
        <source>复杂模式</source>
        <translation>Complex</translation>
    </message>
    <message>
        <source>图像控制</source>
        <translation>Image control</translation>
    </message>
    <message>
        <source>图像分割：</source>
        <translation>Split:</translation>
    </message>
    <message>
        <source>图像分割</source>
        <translation>Split image</translation>
    </message>
    <message>
        <source>水平</source>
        <translation>Horizontal</translation>
    </message>
    <message>
        <source>垂直</source>
        <translation>Vertical</translation>
    </message>
    <message>
        <source>旋转双面文件</source>
        <translation>Duplex rotation</translation>
    </message>
    <message>
        <source>左右翻页</source>
        <translation>Book</translation>
    </message>
    <message>
        <source>上下翻页</source>
        <translation>Fanfold</translation>
    </message>
    <message>
        <source>镜像</source>
        <translation>Mirror</translation>
    </message>
    <message>
        <source>去白页</source>
        <translation>Blank pages</translation>
    </message>
    <message>
        <source>去白页阀值：</source>
        <translation>Remove below:</translation>
    </message>
    <message>
        <source>去白页阀值</source>
        <translation>Blank page threshold</translation>
    </message>
    <message>
        <source>50</source>
        <translation>50</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>分隔</source>
        <translation>Separation</translation>
    </message>
    <message>
        <source>电脑条码侦测</source>
        <translation>Barcode detection</translation>
    </message>
    <message>
        <source>开启</source>
        <translation>On</translation>
    </message>
    <message>
        <source>分隔码辨识</source>
        <translation>Separator code recognition</translation>
    </message>
    <message>
        <source>图像增强</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>去除装订孔</source>
        <translation>Remove punch holes</translation>
    </message>
    <message>
        <source>背景处理：</source>
        <translation>Processing:</translation>
    </message>
    <message>
        <source>背景处理</source>
        <translation>Background processing</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>Smooth</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>模     式：</source>
        <translation>Mode:</translation>
    </message>
    <message>
        <source>背景处理模式</source>
        <translation>Background processing mode</translation>
    </message>
    <message>
        <source>背景处理灵敏度</source>
        <translation>Background processing sensitivity</translation>
    </message>
    <message>
        <source>0</source>
        <translation>0</translation>
    </message>
    <message>
        <source>加边框</source>
        <translation>Add border</translation>
    </message>
    <message>
        <source>白色</source>
        <translation>White</translation>
    </message>
    <message>
        <source>黑色</source>
        <translation>Black</translation>
    </message>
    <message>
        <source>边缘延伸</source>
        <translation>Extend edges</translation>
    </message>
    <message>
        <source>边框宽度（毫米）</source>
        <translation>Border width in mm</translation>
    </message>
    <message>
        <source>去除杂点</source>
        <translation>Speckles</translation>
    </message>
    <message>
        <source>去噪点</source>
        <translation>Remove speckles</translation>
    </message>
    <message>
        <source>噪声数目：</source>
        <translation>Count:</translation>
    </message>
    <message>
        <source>噪声数目（像素）</source>
        <translation>Speckle count in pixels</translation>
    </message>
    <message>
        <source>像素</source>
        <translation>pixels</translation>
    </message>
    <message>
        <source>噪声范围：</source>
        <translation>Size:</translation>
    </message>
    <message>
        <source>噪声范围（像素）</source>
        <translation>Speckle size in pixels</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>缓存</source>
        <translation>Cache</translation>
    </message>
    <message>
        <source>缓存模式</source>
        <translation>Cache mode</translation>
    </message>
    <message>
        <source>纸张数量</source>
        <translation>Sheets</translation>
    </message>
    <message>
        <source>内存模式</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>内存大小</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>默认值</source>
        <translation>Default</translation>
    </message>
    <message>
        <source>内存大小（MB）</source>
        <translation>Memory in MB</translation>
    </message>
    <message>
        <source>MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>图像张数</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>无限</source>
        <translation>Unlimited</translation>
    </message>
    <message>
        <source>1</source>
        <translation>1</translation>
    </message>
    <message>
        <source>页</source>
        <translation>pages</translation>
    </message>
    <message>
        <source>纸张数目</source>
        <translation>Sheets</translation>
    </message>
    <message>
        <source>节电模式</source>
        <translation>Power saving</translation>
    </message>
    <message>
        <source>启用节电模式</source>
        <translation>Sleep after</translation>
    </message>
    <message>
        <source>节电等待时间（分钟）</source>
        <translation>Sleep after minutes</translation>
    </message>
    <message>
        <source>15</source>
        <translation>15</translation>
    </message>
    <message>
        <source>分钟</source>
        <translation>min</translation>
    </message>
    <message>
        <source>关机时间</source>
        <translation>Turn off after</translation>
    </message>
    <message>
        <source>关机等待时间（分钟）</source>
        <translation>Turn off after minutes</translation>
    </message>
    <message>
        <source>120</source>
        <translation>120</translation>
    </message>
    <message>
        <source>退纸设置</source>
        <translation>Ejecting</translation>
    </message>
    <message>
        <source>反方向退纸</source>
        <translation>Eject on the opposite side</translation>
    </message>
    <message>
        <source>手动退纸</source>
        <translation>Eject now</translation>
    </message>
    <message>
        <source>信息</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>扫描仪信息</source>
        <translation>Scanner information</translation>
    </message>
    <message>
        <source>默认设置</source>
        <translation>Defaults</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>KestrelSettingUI</name>
    <message>
        <source>预览设置</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>是否使用预览中的设置的值？</source>
        <translation>Scan the area selected in the preview?</translation>
    </message>
</context>
<context>
    <name>PreviewBoxUI</name>
    <message>
        <source>预览图像</source>
        <translation>Preview picture</translation>
    </message>
</context>
</TS>
