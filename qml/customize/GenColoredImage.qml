// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// A single-colour picture drawn in `color`, sharp at any size and pixel ratio.
Item {
    id: _root

    property color color: PageStyle.buttonPicture
    property alias asynchronous: _image.asynchronous
    property alias cache: _image.cache
    property alias fillMode: _image.fillMode
    property alias horizontalAlignment: _image.horizontalAlignment
    property alias mirror: _image.mirror
    property alias paintedHeight: _image.paintedHeight
    property alias paintedWidth: _image.paintedWidth
    property alias progress: _image.progress
    property alias smooth: _image.smooth
    property alias mipmap: _image.mipmap
    property alias source: _image.source
    property alias sourceSize: _image.sourceSize
    property alias status: _image.status
    property alias verticalAlignment: _image.verticalAlignment

    implicitWidth: _image.implicitWidth
    implicitHeight: _image.implicitHeight

    Image {
        id: _image

        anchors.fill: parent
        visible: false
        fillMode: Image.PreserveAspectFit
        mipmap: true
    }

    // The overlay: the same picture, painted in the colour by the image provider. Unlike a shader effect
    // it needs no OpenGL and no texture of its own, and it is rendered at the size at which it is shown.
    Image {
        anchors.fill: parent
        asynchronous: _image.asynchronous
        cache: _image.cache
        fillMode: _image.fillMode
        horizontalAlignment: _image.horizontalAlignment
        verticalAlignment: _image.verticalAlignment
        mirror: _image.mirror
        smooth: _image.smooth
        mipmap: _image.mipmap
        sourceSize: Qt.size(Math.ceil(_root.width), Math.ceil(_root.height))
        source: _image.status === Image.Ready && _root.width > 0 && _root.height > 0
                ? "image://tint/" + encodeURIComponent(_root.color) + "/" + encodeURIComponent(_image.source) : ""
    }
}
