// Everything that is drawn, and when.
import {
    AmbientLight,
    DirectionalLight,
    Group,
    Scene as Space,
    SRGBColorSpace,
    WebGLRenderer,
} from "three";
import { LineMaterial } from "three/addons/lines/LineMaterial.js";
import { LineSegments2 } from "three/addons/lines/LineSegments2.js";
import { LineSegmentsGeometry } from "three/addons/lines/LineSegmentsGeometry.js";
import { isPoint, pointsOf, type Thing } from "../rules/things.js";
import { add, scale, type Vec } from "../rules/vec.js";
import { Camera } from "./camera.js";
import { Glyphs } from "./glyphs.js";
import { Ink } from "./ink.js";
import type { Part } from "./part.js";
import { Signal } from "./signal.js";
import { viewAxes } from "./writing.js";

/** How long the view has to rest before it counts as stopped, in milliseconds. */
const rest = 120;
/** Of a point's marker, in pixels. */
const markerSize = 5;

/** A thick line over a thing that is pointed at or picked. */
class Marker {
    readonly lines: LineSegments2;
    private readonly material_: LineMaterial;
    private thing_: Thing | undefined;

    /** @param changed_ is called when something else is to be seen */
    constructor(
        color: number,
        private readonly changed_: () => void,
    ) {
        this.material_ = new LineMaterial({ color, linewidth: 3.5, depthTest: false });
        this.lines = new LineSegments2(new LineSegmentsGeometry(), this.material_);
        this.lines.renderOrder = 8;
        this.lines.frustumCulled = false;
        this.lines.visible = false;
    }

    paint(color: number): void {
        this.material_.color.set(color);
    }

    show(thing: Thing | undefined): void {
        if (thing === this.thing_) {
            return;
        }
        this.thing_ = thing;
        this.changed_();
        this.lines.visible = thing !== undefined;
        if (thing !== undefined && !isPoint(thing)) {
            const through = pointsOf(thing);
            this.set_(through.slice(1).flatMap((p, i) => [...through[i]!, ...p]));
        }
    }

    /** A point's marker is as large in every view: a square on a vertex, a cross on a centre. */
    follow({ frame }: Camera): void {
        const thing = this.thing_;
        if (thing === undefined || !isPoint(thing)) {
            return;
        }
        const size = markerSize * frame.unitsPerPixel;
        const corner = (u: number, v: number): Vec =>
            add(thing.at, add(scale(frame.view.right, u * size), scale(frame.view.up, v * size)));
        const square = [corner(-1, -1), corner(1, -1), corner(1, 1), corner(-1, 1)];
        this.set_(
            thing.kind === "vertex"
                ? square.flatMap((p, i) => [...p, ...square[(i + 1) % 4]!])
                : [corner(-1.4, 0), corner(1.4, 0), corner(0, -1.4), corner(0, 1.4)].flat(),
        );
    }

    private set_(segments: number[]): void {
        this.lines.geometry.dispose();
        this.lines.geometry = new LineSegmentsGeometry().setPositions(segments);
    }
}

export class Stage {
    readonly camera: Camera;
    readonly glyphs = new Glyphs();
    readonly placed = this.ink_(0x123c8c, 1.4);
    readonly lit = this.ink_(0xd9480f, 2);
    readonly following = this.ink_(0x0b62c4, 1.6);
    readonly hovered = new Marker(0xe8590c, () => this.invalidate());
    readonly picked = new Marker(0x0b62c4, () => this.invalidate());
    /** A frame is about to be drawn. */
    readonly drawing = new Signal();
    /** A picture has been drawn, and can be copied from the canvas. */
    readonly drawn = new Signal();
    /** The picture has another size. */
    readonly resized = new Signal();
    /** The view has stopped, or was set: what depends on it is to be built again. */
    readonly stopped = new Signal();
    /** Milliseconds of script in the last frames, the rasteriser's among them. */
    readonly frameTimes: number[] = [];
    private readonly renderer_: WebGLRenderer;
    private readonly space_ = new Space();
    private readonly parts_ = new Group();
    private readonly lights_ = new Group();
    private isDrawn_ = true;
    private rest_: ReturnType<typeof setTimeout> | undefined;

    constructor(private readonly canvas_: HTMLCanvasElement) {
        this.renderer_ = new WebGLRenderer({ canvas: canvas_, antialias: true, alpha: true, stencil: true });
        this.renderer_.localClippingEnabled = true;
        this.renderer_.outputColorSpace = SRGBColorSpace;
        this.renderer_.setPixelRatio(Math.min(2, devicePixelRatio));
        const light = new DirectionalLight(0xffffff, 2.1);
        light.position.set(0.35, 0.6, 1);
        this.lights_.add(new AmbientLight(0xffffff, 1.25), light, light.target);
        this.space_.add(
            this.lights_,
            this.parts_,
            this.picked.lines,
            this.hovered.lines,
            ...[this.placed, this.following, this.lit].map(({ group }) => group),
        );
        this.camera = new Camera(() => this.moved_());
        new ResizeObserver(() => this.resize_()).observe(canvas_);
        this.resize_();
    }

    /** Whether nothing is waiting to be drawn or rebuilt. */
    get isAtRest(): boolean {
        return this.isDrawn_ && this.rest_ === undefined;
    }

    show(part: Part): void {
        this.invalidate();
        this.parts_.clear();
        this.parts_.add(part.group);
        this.camera.holds(part.middle, part.reach);
    }

    /** Draws with the next frame. */
    invalidate(): void {
        if (this.isDrawn_) {
            this.isDrawn_ = false;
            requestAnimationFrame(() => this.draw());
        }
    }

    draw(): void {
        const started = performance.now();
        this.drawing.emit();
        this.isDrawn_ = true;
        const { camera } = this;
        const { view } = camera;
        this.hovered.follow(camera);
        this.picked.follow(camera);
        this.lights_.quaternion.copy(camera.three.quaternion);
        viewAxes.right.value.set(...view.right);
        viewAxes.up.value.set(...view.up);
        viewAxes.to.value.set(...view.to);
        this.renderer_.render(this.space_, camera.three);
        this.drawn.emit();
        this.frameTimes.push(performance.now() - started);
        this.frameTimes.splice(0, this.frameTimes.length - 600);
    }

    /** A picture of the part and its annotations, with so many pixels for one of the canvas. */
    picture(scale: number): HTMLCanvasElement {
        const passing = [this.lit.group, this.following.group, this.hovered.lines, this.picked.lines];
        const wereVisible = passing.map(({ visible }) => visible);
        const ratio = this.renderer_.getPixelRatio();
        passing.forEach((object) => (object.visible = false));
        this.renderer_.setPixelRatio(scale);
        this.draw();
        const copy = document.createElement("canvas");
        copy.width = this.canvas_.width;
        copy.height = this.canvas_.height;
        const context = copy.getContext("2d")!;
        context.fillStyle = getComputedStyle(this.canvas_).getPropertyValue("--paper");
        context.fillRect(0, 0, copy.width, copy.height);
        context.drawImage(this.canvas_, 0, 0);
        passing.forEach((object, i) => (object.visible = wereVisible[i]!));
        this.renderer_.setPixelRatio(ratio);
        this.draw();
        return copy;
    }

    /** The view has been set, not turned: what depends on it is rebuilt at once. */
    settle(): void {
        this.still();
        this.stopped.emit();
        this.invalidate();
    }

    /** The view has stopped, and everything is built for it already. */
    still(): void {
        clearTimeout(this.rest_);
        this.rest_ = undefined;
    }

    private ink_(color: number, width: number): Ink {
        return new Ink(color, width, this.glyphs, () => this.invalidate());
    }

    private moved_(): void {
        clearTimeout(this.rest_);
        this.rest_ = setTimeout(() => this.settle(), rest);
        this.invalidate();
    }

    private resize_(): void {
        const { clientWidth, clientHeight } = this.canvas_;
        if (clientWidth > 0 && clientHeight > 0) {
            this.renderer_.setSize(clientWidth, clientHeight, false);
            this.camera.look({ width: clientWidth, height: clientHeight });
            this.resized.emit();
            this.draw();
        }
    }
}
