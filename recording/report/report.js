// SPDX-License-Identifier: GPL-3.0-or-later
(function () {
  "use strict";
  var data = JSON.parse(document.getElementById("data").textContent);
  // In the report's order: three charts of the same times.
  var quantities = ["voltage", "current", "power"];
  var units = ["V", "A", "W"];
  var charts = [];
  var following = false;
  // Times are those of the place where the recording was made, wherever the report is read.
  var start = data.startMs;

  function colour(name) {
    return getComputedStyle(document.documentElement).getPropertyValue("--" + name).trim();
  }

  function two(number) { return (number < 10 ? "0" : "") + number; }

  function clock(ms) {
    var date = new Date(ms);
    return date.getUTCFullYear() + "-" + two(date.getUTCMonth() + 1) + "-" + two(date.getUTCDate()) + " "
      + two(date.getUTCHours()) + ":" + two(date.getUTCMinutes()) + ":" + two(date.getUTCSeconds());
  }

  function rows(quantity) {
    return data.times.map(function (time, index) {
      var row = [new Date(start + time)];
      data.supplies.forEach(function (supply) { row.push(supply[quantity][index]); });
      return row;
    });
  }

  function shadeGaps(context, area, graph) {
    context.fillStyle = colour("gap");
    data.gaps.forEach(function (gap) {
      var left = Math.max(area.x, graph.toDomXCoord(start + gap[0]));
      var right = Math.min(area.x + area.w, graph.toDomXCoord(start + gap[1]));
      if (right >= area.x && left <= area.x + area.w)
        context.fillRect(left, area.y, Math.max(1.5, right - left), area.h);
    });
    context.fillStyle = colour("mark");
    data.marks.forEach(function (mark) {
      var x = graph.toDomXCoord(start + mark);
      if (x >= area.x && x <= area.x + area.w)
        context.fillRect(x - 0.5, area.y, 1, area.h);
    });
  }

  // A zoom or move of one chart is the others' as well.
  function follow(leader) {
    if (following)
      return;
    following = true;
    charts.forEach(function (chart) {
      if (chart !== leader)
        chart.updateOptions({ dateWindow: leader.isZoomed("x") ? leader.xAxisRange() : null });
    });
    following = false;
  }

  function showPoint(time, row) {
    charts.forEach(function (chart, index) {
      var parts = [clock(time)];
      data.supplies.forEach(function (supply) {
        var value = supply[quantities[index]][row];
        if (value === null || value === undefined)
          return;
        var text = Array.isArray(value)
          ? value[1].toFixed(4) + " (" + value[0].toFixed(4) + " – " + value[2].toFixed(4) + ")"
          : value.toFixed(4);
        parts.push(supply.name + " " + text + " " + units[index]);
      });
      document.getElementById(quantities[index] + "-legend").textContent = parts.join("   ");
    });
  }

  function forgetPoint() {
    quantities.forEach(function (quantity) {
      document.getElementById(quantity + "-legend").textContent = "";
    });
  }

  function look() {
    return {
      colors: data.supplies.map(function (supply) { return colour(supply.colour); }),
      gridLineColor: colour("grid"),
      axisLineColor: colour("line"),
    };
  }

  function restyle() {
    charts.forEach(function (chart) {
      chart.updateOptions(look(), true);
      chart.resize();
      chart.updateOptions({});
    });
  }

  if (data.times.length > 0) {
    quantities.forEach(function (quantity, index) {
      var options = Object.assign(look(), {
        labels: ["t"].concat(data.supplies.map(function (supply) { return supply.name; })),
        labelsUTC: true,
        customBars: data.summed,
        connectSeparatedPoints: false,
        fillAlpha: 0.25,
        strokeWidth: 1.5,
        legend: "never",
        animatedZooms: false,
        includeZero: quantity !== "voltage",
        highlightCircleSize: 3,
        xRangePad: 2,
        underlayCallback: shadeGaps,
        drawCallback: function (chart, isInitial) { if (!isInitial) follow(chart); },
        highlightCallback: function (event, time, points, row) { showPoint(time, row); },
        unhighlightCallback: forgetPoint,
        axes: { y: { axisLabelWidth: 56 }, x: { pixelsPerLabel: 90 } },
      });
      if (index === quantities.length - 1) {
        options.showRangeSelector = true;
        options.rangeSelectorHeight = 28;
        options.rangeSelectorPlotFillColor = "";
        options.rangeSelectorPlotStrokeColor = colour("dim");
      }
      charts.push(new Dygraph(document.getElementById(quantity), rows(quantity), options));
    });
    document.getElementById("everything").addEventListener("click", function () { charts[0].resetZoom(); });
    window.matchMedia("(prefers-color-scheme: dark)").addEventListener("change", restyle);
    window.addEventListener("beforeprint", restyle);
    window.addEventListener("afterprint", restyle);
  }
})();
