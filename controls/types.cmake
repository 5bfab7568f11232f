# The controls of the style, and what the qmldir of the module "Tavolins" has of them with Qt 6.
set(TAVOLINS_CONTROLS
    AbstractButton ApplicationWindow BusyIndicator Button CheckBox CheckDelegate ComboBox
    DelayButton Dial Dialog DialogButtonBox Drawer Frame GroupBox HorizontalHeaderView
    ItemDelegate Label Menu MenuBar MenuBarItem MenuItem MenuSeparator Page PageIndicator Pane
    Popup ProgressBar RadioButton RadioDelegate RangeSlider RoundButton ScrollBar
    ScrollIndicator ScrollView Slider SpinBox SplitView StackView SwipeDelegate SwipeView
    Switch SwitchDelegate TabBar TabButton TextArea TextField ToolBar ToolButton ToolSeparator
    ToolTip Tumbler VerticalHeaderView)

# Not in version 1, which is that of the themes: who imports it gets no controls along. Qt imports a
# style in its latest version.
set(TAVOLINS_CONTROLS_TYPES "")
if(TAVOLINS_BUILD_CONTROLS AND NOT TAVOLINS_QT_MAJOR EQUAL 5)
    foreach(control IN LISTS TAVOLINS_CONTROLS)
        foreach(version 2.0 6.0)
            string(APPEND TAVOLINS_CONTROLS_TYPES "\n${control} ${version} Controls/${control}.qml")
        endforeach()
    endforeach()
endif()
