import { Matrix4, OrthographicCamera, Quaternion, Vector3 } from "three";
import { type Frame, orbited, panned, rolled, standardViews, type View, zoomed } from "../rules/view.js";
import type { Vec } from "../rules/vec.js";

/** Half a turn for this many pixels. */
const pixelsPerHalfTurn = 500;

/** What is looked at, and three.js's camera for it. */
export class Camera {
    readonly three = new OrthographicCamera();
    private frame_: Frame = {
        view: standardViews.iso,
        target: [0, 0, 0],
        unitsPerPixel: 1,
        width: 1,
        height: 1,
    };
    /** How far the model reaches from the origin of its box. */
    private reach_ = 1;
    private middle_: Vec = [0, 0, 0];

    /** @param changed is called after every change */
    constructor(private readonly changed: () => void) {}

    get frame(): Frame {
        return this.frame_;
    }

    get view(): View {
        return this.frame_.view;
    }

    look(change: Partial<Frame>): void {
        this.frame_ = { ...this.frame_, ...change };
        this.update_();
    }

    /** What has to be in front of the camera. */
    holds(middle: Vec, reach: number): void {
        this.middle_ = middle;
        this.reach_ = Math.max(reach, 1e-3);
        this.update_();
    }

    orbit(dx: number, dy: number): void {
        const angle = Math.PI / pixelsPerHalfTurn;
        this.look({ view: orbited(this.view, dx * angle, dy * angle) });
    }

    roll(angle: number): void {
        this.look({ view: rolled(this.view, angle) });
    }

    pan(dx: number, dy: number): void {
        this.look(panned(this.frame_, dx, dy));
    }

    zoom(x: number, y: number, factor: number): void {
        const next = zoomed(this.frame_, x, y, factor);
        const relative = next.unitsPerPixel / this.reach_;
        if (relative > 1e-7 && relative < 1) {
            this.look(next);
        }
    }

    private update_(): void {
        const { view, target, unitsPerPixel, width, height } = this.frame_;
        const { three } = this;
        three.right = (width * unitsPerPixel) / 2;
        three.left = -three.right;
        three.top = (height * unitsPerPixel) / 2;
        three.bottom = -three.top;
        const away =
            4 * this.reach_ + Math.hypot(...target.map((t, i) => t - this.middle_[i]!));
        three.near = 0;
        three.far = 2 * away;
        three.position.set(
            target[0] + away * view.to[0],
            target[1] + away * view.to[1],
            target[2] + away * view.to[2],
        );
        const axes = [view.right, view.up, view.to].map((axis) => new Vector3(...axis));
        three.quaternion.copy(
            new Quaternion().setFromRotationMatrix(
                new Matrix4().makeBasis(axes[0]!, axes[1]!, axes[2]!),
            ),
        );
        three.updateMatrixWorld();
        three.updateProjectionMatrix();
        this.changed();
    }
}
